#include "windows/cDIBSectionRegion.h"

#include <gmock/gmock.h>

#include <random>

namespace velmo {
namespace {

using controls::PixelArea;
using ::testing::ElementsAre;

constexpr std::uint32_t Black = 0xFF000000;

std::vector<int> CoverOf(const std::vector<PixelArea>& areas, int width, int height)
{
    std::vector<int> cover(static_cast<std::size_t>(width * height));
    for (const PixelArea& area : areas)
        for (int y = area.top; y < area.top + area.height; ++y)
            for (int x = area.left; x < area.left + area.width; ++x)
                ++cover.at(static_cast<std::size_t>(y * width + x));
    return cover;
}

TEST(Region, CoversExactlyWhatIsNotTheColour)
{
    std::mt19937 random(7); // every run tries the same
    for (unsigned round = 0; round < 300; ++round) {
        const int width = 1 + static_cast<int>(random() % 13);
        const int height = 1 + static_cast<int>(random() % 11);
        std::vector<std::uint32_t> pixels;
        std::vector<int> wanted;
        const std::uint32_t others[] = {0xFF010101, 0xFF000001, 0xFF800000, 0xFF00FF00};
        for (int i = 0; i < width * height; ++i) {
            const bool isBlack = random() % 6 < 1 + round % 6;
            pixels.push_back(isBlack ? Black : others[random() % 4]);
            wanted.push_back(isBlack ? 0 : 1);
        }
        cDIBSection dib;
        ASSERT_TRUE(dib.CreateFromPicture(width, height, pixels));
        cDIBSectionRegion region;
        ASSERT_TRUE(region.Create(dib, 0));
        EXPECT_EQ(CoverOf(region.Areas(), width, height), wanted);
    }
}

TEST(Region, EqualRowsThatFollowEachOtherAreOneRectangle)
{
    /// The areas of a picture of 3 by 4: "o" is black, "x" blue.
    const auto areasOf = [](std::string_view picture, std::uint32_t transparent = 0) {
        std::vector<std::uint32_t> pixels;
        for (const char pixel : picture)
            pixels.push_back(pixel == 'o' ? Black : 0xFF0000FF);
        cDIBSection dib;
        EXPECT_TRUE(dib.CreateFromPicture(3, 4, pixels));
        cDIBSectionRegion region;
        EXPECT_TRUE(region.Create(dib, transparent));
        return region.Areas();
    };
    EXPECT_THAT(areasOf("xoxxoxxoxxox"), ElementsAre(PixelArea{0, 0, 1, 4}, PixelArea{2, 0, 1, 4}));
    EXPECT_THAT(areasOf("oooxxxoooxxx"), ElementsAre(PixelArea{0, 1, 3, 1}, PixelArea{0, 3, 3, 1}));
    EXPECT_THAT(areasOf("oooooooooooo"), ElementsAre(PixelArea{})) << "nothing at all is seen";
    EXPECT_THAT(areasOf("xxxxxxxxxooo", 0xFF0000), ElementsAre(PixelArea{0, 3, 3, 1}));
}

} // namespace
} // namespace velmo
