#include "skin/PixelCoding.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <random>

namespace velmo::skin {
namespace {

using Pixels = std::vector<std::uint32_t>;

Pixels Image(std::size_t width,
             std::size_t height,
             const std::function<unsigned(unsigned, unsigned)>& colour)
{
    Pixels pixels;
    for (unsigned y = 0; y < height; ++y)
        for (unsigned x = 0; x < width; ++x)
            pixels.push_back(0xFF000000U | (colour(x, y) & 0xFFFFFFU));
    return pixels;
}

TEST(PixelCoding, GivesBackWhatWasCoded)
{
    std::mt19937 random(1); // NOLINT(cert-msc51-cpp): the same pictures at each run
    const struct
    {
        const char* what;
        std::size_t width;
        Pixels pixels;
        std::size_t mostBytes;
    } cases[] = {
        {"noise",
         31,                 Image(31,                                         17, [&](unsigned, unsigned) { return static_cast<unsigned>(random()); }),
         2108                                                                                                                                               },
        {"black",     500,   Image(500,                                        40, [](unsigned,  unsigned) { return 0U; }),                              700},
        {"one pixel", 1,     Pixels{0xFFFFFFFFU},                              4 },
        {"a gradient that passes 255",
         64, Image(64, 64,                                                                     [](unsigned x,             unsigned y) { return 4 * (x + y) * 0x010101U; }),
         8200                                                                                                                                                 },
        {"equal rows of noise",
         97, Image(97,         33,                                                                      [](unsigned x,                                                                                 unsigned) { return x * x * 0x9E3779U; }),
         700                                                                                                                                                 },
        {"columns",          9,  Image(9,          9, [](unsigned x,                                                                                  unsigned) { return x % 2 * 0xFF00FFU; }),                                                                                                                                60},
    };
    for (const auto& [what, width, pixels, mostBytes] : cases) {
        const std::vector<std::uint8_t> coded = EncodePixels(pixels, width);
        EXPECT_LE(coded.size(), mostBytes) << what;
        Pixels back(pixels.size());
        EXPECT_TRUE(DecodePixels(coded, width, back)) << what;
        EXPECT_EQ(back, pixels) << what;
        for (std::size_t bytes = 0; bytes < coded.size(); bytes += 7)
            EXPECT_FALSE(DecodePixels(std::span(coded).first(bytes), width, back))
                << what << ", " << bytes << " bytes";
    }
    Pixels row(4);
    EXPECT_FALSE(DecodePixels(std::vector<std::uint8_t>{0xE0}, 4, row))
        << "a copy of a row above the first";
}

} // namespace
} // namespace velmo::skin
