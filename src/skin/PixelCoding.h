#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

/// How pixels are packed: a stream of operations, each of which gives one pixel or a run of them.
/// It suits drawings of plain areas, of brushed rows and of slow gradients, and decodes about as
/// fast as memory is written.
///
///     00iiiiii                    a pixel met before: the last one of this place (`Slot`)
///     01rrggbb                    the pixel before it, changed by -2 to +1 a channel
///     10gggggg rrrrbbbb           green changed by -32 to +31, red and blue by -8 to +7 more
///     110nnnnn                    the pixel before it, n + 1 times
///     111nnnnn, n below 31        the pixels above, n + 1 of them
///     11111111 red green blue     a pixel
///
/// The pixel before the first one, and those met before, are 0xFF000000 at the start. Changes wrap
/// around at 256.
namespace velmo::skin {

inline constexpr std::size_t SlotCount = 64;

/// Where a pixel that was met is kept.
constexpr std::size_t Slot(std::uint32_t pixel)
{
    return (pixel * 0x9E3779B1U) >> 26U;
}

/// Whole rows of `width` pixels.
std::vector<std::uint8_t> EncodePixels(std::span<const std::uint32_t> pixels, std::size_t width);

/// Fills `pixels`, whole rows of `width`. False if the stream ends too early or names what is not
/// there; what follows is then left as it was.
bool DecodePixels(std::span<const std::uint8_t> coded,
                  std::size_t width,
                  std::span<std::uint32_t> pixels);

} // namespace velmo::skin
