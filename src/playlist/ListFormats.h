#pragma once

#include "EntryText.h"

#include "controls/ListRows.h"

#include <optional>
#include <string>
#include <string_view>

namespace velmo {

/// The three kinds of list files.
enum class ListFormat
{
    Own, ///< ".zvl": a title line, then title and "seconds#path" of each entry
    M3u, ///< ".m3u": extended, with its header line
    Pls, ///< ".pls": a profile file of one section
};

/// How the reading of a list's content ended.
enum class ListOutcome
{
    Complete,
    ForeignHeader, ///< the first line is not the format's; nothing was added
    CutShort,      ///< the last entry lacks its second line; what was read has been added
};

/// The first characters of a file in the own format.
inline constexpr std::string_view OwnListMagic = "#ZVL20";
/// The first lines of the other two.
inline constexpr std::string_view M3uHeader = "#EXTM3U";
inline constexpr std::string_view PlsHeader = "[playlist]";

/// The format that goes with the end of a name ("zvl", "m3u", "pls", ignoring case); nothing for
/// any other end.
std::optional<ListFormat> FormatOfExtension(std::string_view end);

/// ".zvl", ".m3u" or ".pls".
std::string_view ExtensionOf(ListFormat format);

/// Adds the entries of a list file to `rows`, in the order and with the oddities of the format.
/// `bytes` is the file's content in any of the encodings that `DecodeFileText` takes.
ListOutcome ReadList(ListFormat format,
                     std::string_view bytes,
                     const EntryStyle& style,
                     controls::ListRows& rows);

} // namespace velmo
