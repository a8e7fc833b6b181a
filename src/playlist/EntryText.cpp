#include "EntryText.h"

#include "core/NumberText.h"
#include "core/SettingsKeys.h"
#include "core/TextRules.h"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace velmo {

namespace {

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

std::int32_t TwoDigitValue(std::string_view digits)
{
    constexpr std::int32_t Ten = 10;
    return (digits[0] - '0') * Ten + (digits[1] - '0');
}

/// Whether the text has the form "12:34".
bool IsMinutesAndSeconds(std::string_view text)
{
    return text.size() == 5 && text[2] == ':' && IsDigit(text[0]) && IsDigit(text[1])
           && IsDigit(text[3]) && IsDigit(text[4]);
}

/// Takes the piece before the next colon from the text's beginning; its number.
double TakeNumber(std::string_view& text)
{
    const std::size_t end = std::min(text.find(':'), text.size());
    const std::string_view piece = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return ParseNumber(piece);
}

std::string ReplaceAll(std::string text, std::string_view what)
{
    std::size_t at = 0;
    while ((at = text.find(what, at)) != std::string::npos)
        text.replace(at++, what.size(), " ");
    return text;
}

/// A whole number that a float holds, by the pattern "00".
std::string TwoDigitsOf(float number)
{
    return TwoDigits(static_cast<std::int32_t>(number));
}

} // namespace

EntryStyle ReadEntryStyle(modINI& settings)
{
    return {
        .numbers = IsTrue(settings.ReadSetting(sections::Display, keys::ShowNumbersInPL, "True")),
        .lengths = IsTrue(settings.ReadSetting(sections::Options, keys::ShowLengthInPL, "True")),
    };
}

std::string_view StripEntryNumber(std::string_view text)
{
    if (text.empty() || !IsDigit(text.front()) || text.front() == '0')
        return text;
    const auto* const end = std::find_if_not(text.begin(), text.end(), IsDigit);
    const std::string_view rest = text.substr(static_cast<std::size_t>(end - text.begin()));
    return rest.starts_with(". ") ? rest.substr(2) : text;
}

std::string ConvertUnderscores(std::string text)
{
    return ReplaceAll(std::move(text), "_");
}

std::string ConvertPercent20(std::string text)
{
    return ReplaceAll(ReplaceAll(std::move(text), "%20%"), "%20");
}

std::string ConvertedTitle(std::string title, modINI& settings)
{
    if (IsTrue(settings.ReadSetting(sections::Options, keys::ConvertPercent20, "False")))
        title = ConvertPercent20(std::move(title));
    if (IsTrue(settings.ReadSetting(sections::Options, keys::ConvertUnderscore, "False")))
        title = ConvertUnderscores(std::move(title));
    return title;
}

std::string FormatSeconds(std::int32_t seconds)
{
    const auto hours = static_cast<float>(static_cast<double>(seconds) / 60.0 / 60.0);
    const std::int32_t secondsPart = seconds % 60;
    const float wholeHours = std::floor(hours);
    const auto minutes =
        static_cast<float>((static_cast<double>(hours) - static_cast<double>(wholeHours)) * 60.0);
    const std::string rest = TwoDigitsOf(std::floor(minutes)) + ":" + TwoDigits(secondsPart);
    return wholeHours > 0 ? TwoDigitsOf(wholeHours) + ":" + rest : rest;
}

std::int32_t ParseLengthText(std::string_view text)
{
    // Nearly every one of a million lengths that are saved.
    if (IsMinutesAndSeconds(text))
        return TwoDigitValue(text.substr(0, 2)) * 60 + TwoDigitValue(text.substr(3));
    constexpr std::size_t LongestWithoutHours = 5;
    constexpr double Sixty = 60;
    const bool hasHours =
        text.size() > LongestWithoutHours && CountCharacters(text) > LongestWithoutHours;
    const double hours = hasHours ? TakeNumber(text) : 0;
    const double minutes = TakeNumber(text);
    return RoundHalfEven((hours * Sixty + minutes) * Sixty + TakeNumber(text));
}

bool IsUnread(std::string_view length)
{
    return TrimBlanks(length).empty() || length == "00:00";
}

} // namespace velmo
