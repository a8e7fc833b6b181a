#pragma once

#include "core/modINI.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace velmo {

/// How rows show what is known of an entry.
struct EntryStyle
{
    bool numbers = true; ///< the row's number and ". " stand before the title
    bool lengths = true; ///< else the column of lengths stays empty
};

/// "ShowNumbersInPL" and "ShowLengthInPL".
EntryStyle ReadEntryStyle(modINI& settings);

/// The text without its leading number, full stop and blank; all of it if it does not begin so, or
/// with "0". A real title that looks numbered loses its number, too. The result points into `text`.
std::string_view StripEntryNumber(std::string_view text);

/// Every "_" as a blank.
std::string ConvertUnderscores(std::string text);

/// Every "%20%", then every remaining "%20", as a blank.
std::string ConvertPercent20(std::string text);

/// The title with those of the two conversions that the settings want.
std::string ConvertedTitle(std::string title, modINI& settings);

/// A length in seconds as "mm:ss", or "hh:mm:ss" from one hour up.
/// The steps go through 32-bit floats, so that many whole minutes from one hour up come out one
/// minute short: 3660 gives "01:00:00". Files hold such texts, so the arithmetic stays. Negative:
/// -1 gives "59:-01".
std::string FormatSeconds(std::int32_t seconds);

/// The seconds of a length as rows show it, rounded: "mm:ss" if it has at most 5 characters, else
/// "hh:mm:ss". A part that is missing or no number counts as 0.
std::int32_t ParseLengthText(std::string_view text);

/// Whether a row with that length still waits for the title reader: it is blank or "00:00".
bool IsUnread(std::string_view length);

} // namespace velmo
