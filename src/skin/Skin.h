#pragma once

#include "controls/PictureRef.h"

#include <cstdint>
#include <span>
#include <vector>

/// The pictures of the windows. They are compiled in, at three scales; no file is read. All of it
/// may be called on any thread.
namespace velmo::skin {

inline constexpr int LargestScale = 3;

/// In pixels at scale 1.
struct PictureSize
{
    int width = 0;
    int height = 0;

    bool operator==(const PictureSize&) const = default;
};

/// Pixels as 0xFFRRGGBB, row by row from the top, without gaps. Pure black, 0xFF000000, stands for
/// a hole in the window, and only in backgrounds.
struct Bitmap
{
    int width = 0;
    int height = 0;
    /// Pixels that lie in the program itself: valid as long as it runs. Empty if they were decoded.
    std::span<const std::uint32_t> constant;
    std::vector<std::uint32_t> decoded;

    std::span<const std::uint32_t> Pixels() const
    {
        return decoded.empty() ? constant : std::span<const std::uint32_t>(decoded);
    }
};

/// How many pictures the list has; their indexes count from 1.
int CountOf(controls::PictureList list);

/// 0 by 0 if there is no such picture.
PictureSize SizeOf(controls::PictureRef picture);

/// The picture at a scale of 1 to `LargestScale`; others are taken to the nearest of them. Width
/// and height are the picture's size times the scale. Empty if there is no such picture. At scale 1
/// nothing is decoded or allocated.
Bitmap Decode(controls::PictureRef picture, int scale);

} // namespace velmo::skin
