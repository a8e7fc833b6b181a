#include "NumberText.h"

#include "TextRules.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace velmo {

namespace {

constexpr double Largest = std::numeric_limits<double>::max();

/// Beyond this an exponent changes nothing any more, whatever digits stand before it.
constexpr int ExponentLimit = 1'000'000;

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

/// Value of a digit of any base up to 16; 16 if it is none.
int DigitValue(char c)
{
    if (IsDigit(c))
        return c - '0';
    const char lower = AsciiLower(c);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : 16;
}

double ParseInBase(std::string_view digits, int base)
{
    double value = 0;
    for (const char c : digits) {
        const int digit = DigitValue(c);
        if (digit >= base)
            break;
        value = std::min(value * base + digit, Largest);
    }
    return value;
}

std::string_view TakeDigits(std::string_view& rest)
{
    std::size_t count = 0;
    while (count < rest.size() && IsDigit(rest[count]))
        ++count;
    const std::string_view digits = rest.substr(0, count);
    rest.remove_prefix(count);
    return digits;
}

/// The parts of a decimal number; without digits it is none.
struct Decimal
{
    bool negative = false;
    std::string_view whole;
    std::string_view fraction;
    int exponent = 0;
};

bool TakeSign(std::string_view& rest)
{
    if (rest.empty() || (rest.front() != '+' && rest.front() != '-'))
        return false;
    const bool negative = rest.front() == '-';
    rest.remove_prefix(1);
    return negative;
}

int ParseExponent(std::string_view rest)
{
    if (rest.empty() || (AsciiLower(rest.front()) != 'e' && AsciiLower(rest.front()) != 'd'))
        return 0;
    rest.remove_prefix(1);
    const bool negative = TakeSign(rest);
    int exponent = 0;
    for (const char c : TakeDigits(rest))
        exponent = std::min(exponent * 10 + (c - '0'), ExponentLimit);
    return negative ? -exponent : exponent;
}

Decimal SplitDecimal(std::string_view text)
{
    Decimal number;
    number.negative = TakeSign(text);
    number.whole = TakeDigits(text);
    if (!text.empty() && text.front() == '.') {
        text.remove_prefix(1);
        number.fraction = TakeDigits(text);
    }
    number.exponent = ParseExponent(text);
    return number;
}

/// Power of ten of the first digit that is not 0.
int Magnitude(const Decimal& number)
{
    const std::size_t first = number.whole.find_first_not_of('0');
    if (first != std::string_view::npos)
        return number.exponent + static_cast<int>(number.whole.size() - first) - 1;
    return number.exponent - static_cast<int>(number.fraction.find_first_not_of('0')) - 1;
}

double ValueOf(const Decimal& number)
{
    if (number.whole.empty() && number.fraction.empty())
        return 0;
    std::string text(number.whole.empty() ? "0" : number.whole);
    text.append(".").append(number.fraction.empty() ? "0" : number.fraction);
    text.append("e").append(std::to_string(number.exponent));
    double value = 0;
    const auto parsed = std::from_chars(text.data(), text.data() + text.size(), value);
    if (parsed.ec == std::errc::result_out_of_range)
        value = Magnitude(number) > 0 ? Largest : 0;
    return number.negative ? -value : value;
}

/// Digits of a positive number and the power of ten of the first.
struct Digits
{
    std::string text;
    int power = 0;
};

Digits SignificantDigits(float value)
{
    std::array<char, 32> buffer{};
    constexpr int AfterFirst = 6;
    const auto* const end = std::to_chars(buffer.data(),
                                          buffer.data() + buffer.size(),
                                          value,
                                          std::chars_format::scientific,
                                          AfterFirst)
                                .ptr;
    const std::string_view text(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
    const std::size_t mark = text.find('e');
    Digits digits;
    digits.text = text.substr(0, 1);
    digits.text += text.substr(2, mark - 2);
    digits.text.erase(digits.text.find_last_not_of('0') + 1);
    const bool negative = text[mark + 1] == '-';
    std::from_chars(text.data() + mark + 2, end, digits.power);
    if (negative)
        digits.power = -digits.power;
    return digits;
}

/// Text of a positive number; below 1 it begins with the point.
std::string Unsigned(float value)
{
    const Digits digits = SignificantDigits(value);
    if (digits.power < 0)
        return "." + std::string(static_cast<std::size_t>(-digits.power - 1), '0') + digits.text;
    const auto wholeCount = static_cast<std::size_t>(digits.power) + 1;
    if (digits.text.size() <= wholeCount)
        return digits.text + std::string(wholeCount - digits.text.size(), '0');
    return digits.text.substr(0, wholeCount) + "." + digits.text.substr(wholeCount);
}

enum class Kind
{
    Plain,
    Blanked,
};

std::string TextOf(double number, Kind kind)
{
    const auto value = static_cast<float>(number);
    const std::string positive = kind == Kind::Blanked ? " " : "";
    if (!std::isfinite(value) || value == 0)
        return positive + "0";
    std::string text = Unsigned(std::abs(value));
    if (kind == Kind::Plain && text.front() == '.')
        text.insert(0, 1, '0');
    return (value < 0 ? "-" : positive) + text;
}

} // namespace

double ParseNumber(std::string_view text)
{
    text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
    if (text.empty() || text.front() != '&')
        return ValueOf(SplitDecimal(text));
    const char base = text.size() > 1 ? AsciiLower(text[1]) : '\0';
    if (base == 'h')
        return ParseInBase(text.substr(2), 16);
    return ParseInBase(text.substr(base == 'o' ? 2 : 1), 8);
}

std::int32_t RoundHalfEven(double value)
{
    if (std::isnan(value))
        return 0;
    const double below = std::floor(value);
    const double distance = value - below;
    const bool up = distance > 0.5 || (distance == 0.5 && std::fmod(below, 2) != 0);
    const double rounded = up ? below + 1 : below;
    constexpr double Lowest = std::numeric_limits<std::int32_t>::min();
    constexpr double Highest = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::clamp(rounded, Lowest, Highest));
}

double Int(double value)
{
    return std::floor(value);
}

std::string PlainNumber(double value)
{
    return TextOf(value, Kind::Plain);
}

std::string PlainNumber(std::int32_t value)
{
    return std::to_string(value);
}

std::string BlankedNumber(double value)
{
    return TextOf(value, Kind::Blanked);
}

std::string TwoDigits(std::int32_t value)
{
    const std::int64_t wide = value;
    const std::string digits = std::to_string(std::abs(wide));
    return (wide < 0 ? "-" : "") + std::string(digits.size() < 2 ? 1 : 0, '0') + digits;
}

} // namespace velmo
