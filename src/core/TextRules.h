#pragma once

#include "CaseRules.h"
#include "Utf8.h"

#include <string>
#include <string_view>
#include <vector>

namespace velmo {

/// The text without blanks at its ends. The result points into `text`.
std::string_view TrimBlanks(std::string_view text);

/// The text without blanks and tabs at its ends. The result points into `text`.
std::string_view TrimBlanksAndTabs(std::string_view text);

/// The lines of a text; CR LF, LF and a lone CR end one. A last line without line end counts, a
/// line end at the very end begins no further line. The results point into `text` and hold no line
/// end.
std::vector<std::string_view> SplitLines(std::string_view text);

/// The parts of a text between one `separator` and the next. The empty text has no part; a
/// separator at the very end is followed by an empty one. The results point into `text`.
std::vector<std::string_view> Split(std::string_view text, char separator);

/// The bytes of a file without the UTF-8 byte-order mark at its beginning.
std::string_view SkipByteOrderMark(std::string_view bytes);

/// What a text file says: a byte-order mark is skipped; valid UTF-8 is taken as such, otherwise
/// every byte from 0x80 on as Windows-1252. U+DC80 to U+DCFF in three bytes, which stand for the
/// stray bytes 0x80 to 0xFF, pass as valid and come back as those bytes.
std::string DecodeFileText(std::string_view bytes);

/// Whether `DecodeFileText` takes the bytes as Windows-1252.
bool IsWindows1252(std::string_view bytes);

/// A text as files hold it: stray bytes become U+DC80 to U+DCFF in three bytes, so that one file
/// name that is no UTF-8 does not change how the rest of the file is read.
std::string EncodeFileText(std::string_view text);

/// A text for a file that is read as Windows-1252; a character that this lacks becomes "?".
std::string EncodeWindows1252(std::string_view text);

} // namespace velmo
