#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace velmo {

/// The number that `text` begins with, after blanks and tabs; 0 if it begins with none.
/// Knows `&H` with hex digits, `&O` or `&` with octal digits, and decimal numbers with a point and
/// an exponent (E or D, either case). What is too large for a double is clamped to the largest one.
/// The locale has no part in it.
double ParseNumber(std::string_view text);

/// Nearest whole number, a half to the even neighbour; beyond 32 bits the nearest limit, 0 for what
/// is no number. Independent of the rounding mode of the floating-point environment.
std::int32_t RoundHalfEven(double value);

/// The integer part as the program understands it: rounds down, also below zero.
double Int(double value);

/// A number as settings and joined texts hold it: "1", "-3", "67.5", "0.5". Rounded to single
/// precision and to seven significant digits; never with an exponent. "0" for what is not finite.
std::string PlainNumber(double value);

/// A whole number with all its digits.
std::string PlainNumber(std::int32_t value);

/// As `PlainNumber`, with a blank where a minus would stand and without the zero before the point:
/// " 1", "-3", " .5".
std::string BlankedNumber(double value);

/// A whole number in pattern "00": at least two digits, a minus before them if it is negative.
std::string TwoDigits(std::int32_t value);

} // namespace velmo
