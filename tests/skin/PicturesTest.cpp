#include "forms/Playlist.h"
#include "forms/fX.h"
#include "forms/frmListMGR.h"
#include "forms/wmain.h"
#include "skin/Skin.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>

namespace velmo::skin {
namespace {

using controls::PictureList;
using controls::PictureRef;

constexpr std::uint32_t Hole = 0xFF000000U;
constexpr int Corner = 8;

std::uint32_t At(const Bitmap& bitmap, int x, int y)
{
    return bitmap.Pixels()[static_cast<std::size_t>(y * bitmap.width + x)];
}

/// Whether all pixels are opaque, and pure black stands in the rounded corners of a background
/// alone, in the same blocks at each scale.
testing::AssertionResult IsCutOutRightly(const Bitmap& bitmap, const Bitmap& plain, int scale)
{
    const bool isBackground = plain.width > 100;
    for (int y = 0; y < bitmap.height; ++y) {
        for (int x = 0; x < bitmap.width; ++x) {
            const std::uint32_t pixel = At(bitmap, x, y);
            const int fromSide = std::min(x, bitmap.width - 1 - x) / scale;
            const int fromEdge = std::min(y, bitmap.height - 1 - y) / scale;
            if (pixel >> 24U != 0xFFU)
                return testing::AssertionFailure() << "clear at " << x << ", " << y;
            if (pixel == Hole && (!isBackground || fromSide >= Corner || fromEdge >= Corner))
                return testing::AssertionFailure() << "a hole at " << x << ", " << y;
            if ((pixel == Hole) != (At(plain, x / scale, y / scale) == Hole))
                return testing::AssertionFailure() << "another outline at " << x << ", " << y;
            if (isBackground && fromSide + fromEdge == 0 && pixel != Hole)
                return testing::AssertionFailure() << "a square corner at " << x << ", " << y;
        }
    }
    return testing::AssertionSuccess();
}

TEST(Pictures, HaveTheSizesOfTheirListsAndHolesInCornersAlone)
{
    int count = 0;
    const auto check = [&count](PictureRef picture, PictureSize size) {
        SCOPED_TRACE("list " + std::to_string(static_cast<int>(picture.list)) + " picture "
                     + std::to_string(picture.index));
        ++count;
        EXPECT_EQ(SizeOf(picture), size);
        const Bitmap plain = Decode(picture, 1);
        for (int scale = 1; scale <= LargestScale; ++scale) {
            const Bitmap bitmap = Decode(picture, scale);
            ASSERT_EQ(bitmap.width, size.width * scale);
            ASSERT_EQ(bitmap.height, size.height * scale);
            EXPECT_TRUE(IsCutOutRightly(bitmap, plain, scale)) << " at " << scale;
        }
    };
    /// The pictures from one index to the next, from the one after that to its next, and so on.
    const auto expect = [&](PictureList list, PictureSize size, std::vector<std::uint8_t> ends) {
        for (std::size_t end = 0; end < ends.size(); end += 2)
            for (std::uint8_t index = ends[end]; index <= ends[end + 1]; ++index)
                check({list, index}, size);
    };
    expect(PictureList::wmain, {265, 177}, {1, 1});
    expect(PictureList::wmain, {89, 9}, {2, 4});
    expect(PictureList::wmain, {33, 33}, {5, 13, 20, 22, 32, 34});
    expect(PictureList::wmain, {25, 25}, {14, 16});
    expect(PictureList::wmain, {28, 28}, {17, 19, 23, 31, 35, 43});
    expect(PictureList::wmain, {29, 13}, {44, 49});
    expect(PictureList::wnd, {13, 12}, {1, 6});
    expect(PictureList::wnd, {16, 417}, {7, 9});
    expect(PictureList::wnd, {16, 16}, {10, 18});
    expect(PictureList::fx, {265, 97}, {1, 1});
    expect(PictureList::fx, {9, 52}, {2, 4});
    expect(PictureList::fx, {40, 14}, {5, 19});
    expect(PictureList::fx, {9, 9}, {20, 22});
    expect(PictureList::pl, {314, 490}, {1, 1});
    expect(PictureList::pl, {32, 16}, {2, 6, 19, 20, 24, 25, 32, 34});
    expect(PictureList::pl, {54, 16}, {7, 18, 21, 23, 26, 31});
    expect(PictureList::listmgr, {265, 138}, {1, 1});
    expect(PictureList::scrollBar, {16, 417}, {1, 3});
    expect(PictureList::scrollBar, {16, 16}, {4, 12});
    int held = 0;
    for (int list = 1; list <= static_cast<int>(PictureList::scrollBar); ++list)
        held += CountOf(static_cast<PictureList>(list));
    EXPECT_EQ(held, count);
    for (const PictureRef none :
         {PictureRef(), controls::StatesFrom(PictureList::fx, 22).pressed}) {
        EXPECT_EQ(SizeOf(none), PictureSize{});
        EXPECT_TRUE(Decode(none, 1).Pixels().empty());
    }
}

/// Whether the corners of the control's picture are those of the background under it.
bool StandsWithoutSeam(const controls::Form& form, const controls::Image& image, int scale)
{
    const Bitmap under = Decode(form.Picture, scale);
    const Bitmap picture = Decode(image.States.normal, scale);
    const int left = static_cast<int>(std::lround(image.Left / 15)) * scale;
    const int top = static_cast<int>(std::lround(image.Top / 15)) * scale;
    for (const int x : {0, picture.width - 1})
        for (const int y : {0, picture.height - 1})
            if (At(picture, x, y) != At(under, left + x, top + y))
                return false;
    return true;
}

TEST(Pictures, OfAControlDifferByStateAndStandOnTheBackgroundWithoutSeam)
{
    const forms::wmain main;
    const forms::Playlist playlist;
    const forms::fX equalizer;
    const forms::frmListMGR manager;
    int seen = 0;
    for (const controls::Form* window :
         std::initializer_list<const controls::Form*>{&main, &playlist, &equalizer, &manager}) {
        for (const controls::Control* control : window->Controls()) {
            const auto* image = dynamic_cast<const controls::Image*>(control);
            if (image == nullptr || !image->States.normal)
                continue;
            ++seen;
            std::set<std::vector<std::uint32_t>> looks;
            for (const PictureRef state :
                 {image->States.normal, image->States.pressed, image->States.hover}) {
                const Bitmap bitmap = Decode(state, 1);
                looks.emplace(bitmap.Pixels().begin(), bitmap.Pixels().end());
            }
            EXPECT_EQ(looks.size(), 3U) << image->Name;
            for (int scale = 1; image->Visible && !image->Stretch && scale <= LargestScale; ++scale)
                EXPECT_TRUE(StandsWithoutSeam(*window, *image, scale))
                    << image->Name << " at " << scale;
        }
    }
    EXPECT_GT(seen, 50);
}

} // namespace
} // namespace velmo::skin
