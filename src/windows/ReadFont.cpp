#include "ReadFont.h"

#include "core/NumberText.h"
#include "core/SettingsKeys.h"
#include "core/TextRules.h"

#include <algorithm>
#include <string>

namespace velmo {

namespace {

/// A number of the settings as a colour; what no colour is comes as near as it can.
controls::Colour ColourOf(const std::string& text)
{
    constexpr double White = 0xFFFFFF;
    return static_cast<controls::Colour>(std::clamp(ParseNumber(text), 0.0, White));
}

} // namespace

void ReadFont(modINI& settings, forms::wmain& window, forms::Playlist& playlist)
{
    const auto text = [&](const char* key, const char* fallback) {
        return settings.ReadSetting(sections::Display, key, fallback);
    };
    std::string size = text(keys::FontSize, "8.5");
    std::replace(size.begin(), size.end(), ',', '.');
    const bool bold = IsTrue(text(keys::FontBold, "false"));
    const std::int32_t weight = RoundHalfEven(ParseNumber(text(keys::FontWeight, "400")));
    constexpr int BoldWeight = 700;
    const controls::Font font{
        .name = text(keys::FontName, "Tahoma"),
        .sizePoints = ParseNumber(size),
        .weight = bold ? BoldWeight : weight,
        .italic = IsTrue(text(keys::FontItalic, "false")),
        .underline = IsTrue(text(keys::FontUnderline, "false")),
        .strikethrough = IsTrue(text(keys::FontStrikethrough, "false")),
    };
    const controls::Colour colour = ColourOf(text(keys::FontColor, "&HFFFF00"));
    window.lblSongName.Font = font;
    window.lblSongName.ForeColor = colour;
    playlist.pl.Font = font;
    playlist.pl.ForeColor = colour;
}

} // namespace velmo
