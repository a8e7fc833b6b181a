#include "windows/cDIBSectionRegion.h"

#include <gtest/gtest.h>

#include <random>

namespace velmo {
namespace {

using controls::PixelArea;

struct Window final : controls::Form
{
    Window()
        : Form("window", "", 300, 300, controls::BorderStyle::None)
    {}
};

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
    for (int round = 0; round < 300; ++round) {
        const int width = 1 + static_cast<int>(random() % 13);
        const int height = 1 + static_cast<int>(random() % 11);
        std::vector<std::uint32_t> pixels;
        std::vector<int> wanted;
        const std::uint32_t others[] = {0xFF010101, 0xFF000001, 0xFF800000, 0xFF00FF00};
        const unsigned blackness = 1 + round % 6;
        for (int i = 0; i < width * height; ++i) {
            const bool isBlack = random() % 6 < blackness;
            pixels.push_back(isBlack ? 0xFF000000 : others[random() % 4]);
            wanted.push_back(isBlack ? 0 : 1);
        }
        cDIBSection dib;
        ASSERT_TRUE(dib.CreateFromPicture(width, height, pixels));
        cDIBSectionRegion region;
        ASSERT_TRUE(region.Create(dib, 0));
        EXPECT_EQ(CoverOf(region.Areas(), width, height), wanted);
    }
}

TEST(Region, EqualRowsAreOneRectangleAndBlackInsideIsAHole)
{
    const std::uint32_t o = 0xFF000000;
    const std::uint32_t x = 0xFF0000FF;
    struct Case
    {
        std::vector<std::uint32_t> pixels; ///< 3 by 4
        std::uint32_t transparent;
        std::vector<PixelArea> areas;
    };
    const Case cases[] = {
        {{x, x, x, x, x, x, x, x, x, x, x, x}, 0,        {{0, 0, 3, 4}}                                          },
        {{x, o, x, x, o, x, x, o, x, x, o, x}, 0,        {{0, 0, 1, 4}, {2, 0, 1, 4}}                            },
        {{x, x, x, x, o, x, x, x, x, x, x, x},
         0,                                              {{0, 0, 3, 1}, {0, 1, 1, 1}, {2, 1, 1, 1}, {0, 2, 3, 2}}},
        {{o, o, o, x, x, x, o, o, o, x, x, x}, 0,        {{0, 1, 3, 1}, {0, 3, 3, 1}}                            },
        {{o, o, o, o, o, o, o, o, o, o, o, o}, 0,        {{0, 0, 0, 0}}                                          },
        {{x, x, x, x, x, x, x, x, x, o, o, o}, 0xFF0000, {{0, 3, 3, 1}}                                          }, // blue
    };
    for (const Case& c : cases) {
        cDIBSection dib;
        ASSERT_TRUE(dib.CreateFromPicture(3, 4, c.pixels));
        cDIBSectionRegion region;
        ASSERT_TRUE(region.Create(dib, c.transparent));
        EXPECT_EQ(region.Areas(), c.areas);
    }
}

TEST(Region, WindowsKeepItUntilItIsTakenAwayOrDestroyed)
{
    cDIBSection dib;
    EXPECT_FALSE(dib.Create(0, 4));
    EXPECT_FALSE(dib.CreateFromPicture(2, 2, std::vector<std::uint32_t>(3)));
    Window one;
    Window two;
    cDIBSectionRegion region;
    EXPECT_FALSE(region.Create(dib, 0));
    region.Applied(one, true);
    EXPECT_EQ(region.AppliedToCount(), 0);

    ASSERT_TRUE(dib.CreateFromPicture(2, 1, std::vector<std::uint32_t>{0xFF000000, 0xFFFFFFFF}));
    EXPECT_EQ(dib.BytesPerScanLine(), 8);
    ASSERT_TRUE(region.Create(dib, 0));
    region.Applied(one, true);
    region.Applied(one, true);
    region.Applied(two, true);
    EXPECT_EQ(region.AppliedToCount(), 2);
    region.Applied(two, false);
    EXPECT_TRUE(two.Outline.Get().empty() && !region.Applied(two));
    EXPECT_EQ(one.Outline.Get(),
              (std::vector<PixelArea>{
                  {1, 0, 1, 1}
    }));
    region.Destroy();
    EXPECT_TRUE(one.Outline.Get().empty());
    EXPECT_EQ(region.AppliedToCount(), 0);
}

} // namespace
} // namespace velmo
