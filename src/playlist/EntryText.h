#pragma once

#include "core/modINI.h"

#include <cstdint>
#include <string>

namespace velmo {

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

} // namespace velmo
