#include "EntryText.h"

#include "core/NumberText.h"
#include "core/SettingsKeys.h"
#include "core/TextRules.h"

#include <cmath>
#include <string_view>

namespace velmo {

namespace {

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

} // namespace velmo
