#include "skin/PixelCoding.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <random>

namespace velmo::skin {
namespace {

TEST(PixelCoding, GivesBackWhatWasCoded)
{
    const auto expect = [](const char* what,
                           unsigned width,
                           unsigned height,
                           std::size_t mostBytes,
                           const std::function<unsigned(unsigned, unsigned)>& colour) {
        std::vector<std::uint32_t> pixels;
        for (unsigned y = 0; y < height; ++y)
            for (unsigned x = 0; x < width; ++x)
                pixels.push_back(0xFF000000U | (colour(x, y) & 0xFFFFFFU));
        const std::vector<std::uint8_t> coded = EncodePixels(pixels, width);
        EXPECT_LE(coded.size(), mostBytes) << what;
        std::vector<std::uint32_t> back(pixels.size());
        EXPECT_TRUE(DecodePixels(coded, width, back)) << what;
        EXPECT_EQ(back, pixels) << what;
        for (std::size_t bytes = 0; bytes < coded.size(); bytes += 7)
            EXPECT_FALSE(DecodePixels(std::span(coded).first(bytes), width, back))
                << what << ", " << bytes << " bytes";
    };
    std::mt19937 random(1); // NOLINT(cert-msc51-cpp): the same pictures at each run
    expect(
        "noise", 31, 17, 2108, [&](unsigned, unsigned) { return static_cast<unsigned>(random()); });
    expect("black", 500, 40, 700, [](unsigned, unsigned) { return 0U; });
    expect("one pixel", 1, 1, 4, [](unsigned, unsigned) { return 0xFFFFFFU; });
    expect("a gradient that passes 255", 64, 64, 8200, [](unsigned x, unsigned y) {
        return 4 * (x + y) * 0x010101U;
    });
    expect(
        "equal rows of noise", 97, 33, 700, [](unsigned x, unsigned) { return x * x * 0x9E3779U; });
    expect("columns", 9, 9, 60, [](unsigned x, unsigned) { return x % 2 * 0xFF00FFU; });
    std::vector<std::uint32_t> row(4);
    EXPECT_FALSE(DecodePixels(std::vector<std::uint8_t>{0xE0}, 4, row))
        << "a copy of a row above the first";
}

} // namespace
} // namespace velmo::skin
