#pragma once

#include "controls/Picture.h"

#include <cstdint>
#include <string_view>

namespace velmo {

/// Header and palette of the picture.
struct BitmapInfo
{
    std::uint32_t biSize = 0; ///< bytes of the header alone
    std::int32_t biWidth = 0;
    std::int32_t biHeight = 0; ///< above 0: rows come from the bottom up
    std::uint16_t biPlanes = 0;
    std::uint16_t biBitCount = 0;
    std::uint32_t biCompression = 0;
    std::uint32_t biSizeImage = 0;
    std::int32_t biXPelsPerMeter = 0;
    std::int32_t biYPelsPerMeter = 0;
    std::uint32_t biClrUsed = 0;
    std::uint32_t biClrImportant = 0;
    controls::Palette bmiColors{}; ///< 0x00RRGGBB

    bool operator==(const BitmapInfo&) const = default;
};

/// The header of a picture of that size, with 256 colours. Kept: it tells ten times the height.
BitmapInfo MakeBitmapInfo(std::int32_t width, std::int32_t height, std::string_view colour);

/// The palette of a colour: "red", "green" or "blue", ignoring case. 0 is black; 1 to 127 run from
/// the colour to another, and stay black for any other name; 128 to 255 run from black over blue
/// and red to white whatever the colour is.
controls::Palette MakePalette(std::string_view colour);

} // namespace velmo
