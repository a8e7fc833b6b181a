#include "SpectrumPalette.h"

#include "core/TextRules.h"

namespace velmo {

namespace {

constexpr std::uint32_t Rgb(std::uint32_t red, std::uint32_t green, std::uint32_t blue)
{
    return red << 16U | green << 8U | blue;
}

void FillFade(controls::Palette& palette, std::string_view colour)
{
    for (std::uint32_t a = 1; a <= 127; ++a) {
        const std::uint32_t rising = 2 * a;
        const std::uint32_t falling = 255 - 2 * a;
        if (EqualsIgnoringCase(colour, "green"))
            palette[a] = Rgb(rising, falling, 0);
        else if (EqualsIgnoringCase(colour, "red"))
            palette[a] = Rgb(falling, rising, 0);
        else if (EqualsIgnoringCase(colour, "blue"))
            palette[a] = Rgb(rising, 0, falling);
    }
}

void FillHeat(controls::Palette& palette)
{
    for (std::uint32_t a = 0; a <= 31; ++a) {
        palette[128 + a] = Rgb(0, 0, 8 * a);
        palette[160 + a] = Rgb(8 * a, 0, 255);
        palette[192 + a] = Rgb(255, 8 * a, 8 * (31 - a));
        palette[224 + a] = Rgb(255, 255, 8 * a);
    }
}

} // namespace

BitmapInfo MakeBitmapInfo(std::int32_t width, std::int32_t height, std::string_view colour)
{
    constexpr std::uint32_t HeaderBytes = 40;
    constexpr std::uint32_t Colours = 256;
    BitmapInfo info;
    info.biSize = HeaderBytes;
    info.biWidth = width;
    info.biHeight = height * 10;
    info.biPlanes = 1;
    info.biBitCount = 8;
    info.biClrUsed = Colours;
    info.biClrImportant = Colours;
    info.bmiColors = MakePalette(colour);
    return info;
}

controls::Palette MakePalette(std::string_view colour)
{
    controls::Palette palette{};
    FillFade(palette, colour);
    FillHeat(palette);
    return palette;
}

} // namespace velmo
