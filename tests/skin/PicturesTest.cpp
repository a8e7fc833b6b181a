#include "forms/Playlist.h"
#include "forms/fX.h"
#include "forms/frmListMGR.h"
#include "forms/wmain.h"
#include "skin/Skin.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <ostream>
#include <set>
#include <vector>

namespace velmo::controls {

void PrintTo(const PictureRef& picture, std::ostream* out)
{
    *out << "list " << static_cast<int>(picture.list) << " picture " << int{picture.index};
}

} // namespace velmo::controls

namespace velmo::skin {
namespace {

using controls::PictureList;
using controls::PictureRef;

constexpr std::uint32_t Hole = 0xFF000000U;
constexpr int Corner = 8;

std::uint32_t At(const Bitmap& bitmap, int x, int y)
{
    const std::ptrdiff_t place = std::ptrdiff_t{y} * bitmap.width + x;
    return bitmap.Pixels()[static_cast<std::size_t>(place)];
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
    const auto expect = [&count](PictureList list, int first, int last, PictureSize size) {
        for (int index = first; index <= last; ++index, ++count) {
            const PictureRef picture{list, static_cast<std::uint8_t>(index)};
            EXPECT_EQ(SizeOf(picture), size) << testing::PrintToString(picture);
            const Bitmap plain = Decode(picture, 1);
            for (int scale = 1; scale <= LargestScale; ++scale) {
                const Bitmap bitmap = Decode(picture, scale);
                ASSERT_EQ(bitmap.width, size.width * scale);
                ASSERT_EQ(bitmap.height, size.height * scale);
                EXPECT_TRUE(IsCutOutRightly(bitmap, plain, scale))
                    << testing::PrintToString(picture) << " at " << scale;
            }
        }
    };
    expect(PictureList::wmain, 1, 1, {265, 177});
    expect(PictureList::wmain, 2, 4, {89, 9});
    expect(PictureList::wmain, 5, 13, {33, 33});
    expect(PictureList::wmain, 14, 16, {25, 25});
    expect(PictureList::wmain, 17, 19, {28, 28});
    expect(PictureList::wmain, 20, 22, {33, 33});
    expect(PictureList::wmain, 23, 31, {28, 28});
    expect(PictureList::wmain, 32, 34, {33, 33});
    expect(PictureList::wmain, 35, 43, {28, 28});
    expect(PictureList::wmain, 44, 49, {29, 13});
    expect(PictureList::wnd, 1, 6, {13, 12});
    expect(PictureList::wnd, 7, 9, {16, 417});
    expect(PictureList::wnd, 10, 18, {16, 16});
    expect(PictureList::fx, 1, 1, {265, 97});
    expect(PictureList::fx, 2, 4, {9, 52});
    expect(PictureList::fx, 5, 19, {40, 14});
    expect(PictureList::fx, 20, 22, {9, 9});
    expect(PictureList::pl, 1, 1, {314, 490});
    expect(PictureList::pl, 2, 6, {32, 16});
    expect(PictureList::pl, 7, 18, {54, 16});
    expect(PictureList::pl, 19, 20, {32, 16});
    expect(PictureList::pl, 21, 23, {54, 16});
    expect(PictureList::pl, 24, 25, {32, 16});
    expect(PictureList::pl, 26, 31, {54, 16});
    expect(PictureList::pl, 32, 34, {32, 16});
    expect(PictureList::listmgr, 1, 1, {265, 138});
    expect(PictureList::scrollBar, 1, 3, {16, 417});
    expect(PictureList::scrollBar, 4, 12, {16, 16});
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
    const controls::Form* const windows[] = {&main, &playlist, &equalizer, &manager};
    int seen = 0;
    for (const controls::Form* window : windows) {
        for (const controls::Control* control : window->Controls()) {
            if (control->Kind != controls::ControlKind::Image)
                continue;
            const auto& image = static_cast<const controls::Image&>(*control);
            if (!image.States.normal)
                continue;
            ++seen;
            std::set<std::vector<std::uint32_t>> looks;
            for (const PictureRef state :
                 {image.States.normal, image.States.pressed, image.States.hover}) {
                const Bitmap bitmap = Decode(state, 1);
                looks.emplace(bitmap.Pixels().begin(), bitmap.Pixels().end());
            }
            EXPECT_EQ(looks.size(), 3U) << image.Name;
            for (int scale = 1; image.Visible && !image.Stretch && scale <= LargestScale; ++scale)
                EXPECT_TRUE(StandsWithoutSeam(*window, image, scale))
                    << image.Name << " at " << scale;
        }
    }
    EXPECT_GT(seen, 50);
}

struct Box
{
    int left = 99;
    int top = 99;
    int right = -1;
    int bottom = -1;

    int Width() const { return right - left; }
    double MiddleX() const { return (left + right) / 2.0; }
    double MiddleY() const { return (top + bottom) / 2.0; }
};

/// What encloses a key's sign: the pixels of its middle that are at least `share` as bright as the
/// brightest one.
Box SignOf(PictureRef picture)
{
    constexpr double Share = .62;
    const Bitmap bitmap = Decode(picture, 1);
    const int rim = bitmap.width / 4 - 1;
    const auto green = [&](int x, int y) {
        return static_cast<int>(At(bitmap, x, y) >> 8U & 0xFFU);
    };
    int brightest = 0;
    Box box;
    for (const bool measuring : {true, false}) {
        for (int y = rim; y < bitmap.height - rim; ++y) {
            for (int x = rim; x < bitmap.width - rim; ++x) {
                if (measuring)
                    brightest = std::max(brightest, green(x, y));
                else if (green(x, y) >= Share * brightest)
                    box = {std::min(box.left, x),
                           std::min(box.top, y),
                           std::max(box.right, x),
                           std::max(box.bottom, y)};
            }
        }
    }
    return box;
}

TEST(Pictures, SignsStandStillUnderThePointerAndGoDownWithTheirKey)
{
    for (const int first : {5, 8, 11, 20, 23, 26, 29, 32, 35, 38, 41}) {
        const auto states =
            controls::StatesFrom(PictureList::wmain, static_cast<std::uint8_t>(first));
        const Box normal = SignOf(states.normal);
        const Box hover = SignOf(states.hover);
        const Box pressed = SignOf(states.pressed);
        // Light makes the softened edge of a sign brighter, by which its middle seems to move.
        constexpr double Half = .5;
        EXPECT_GE(normal.Width(), 8) << first;
        EXPECT_NEAR(hover.MiddleX(), normal.MiddleX(), Half) << first;
        EXPECT_NEAR(hover.MiddleY(), normal.MiddleY(), Half) << first;
        EXPECT_NEAR(pressed.MiddleX(), normal.MiddleX(), Half) << first;
        EXPECT_NEAR(pressed.MiddleY(), normal.MiddleY() + 1, Half) << first;
    }
}

} // namespace
} // namespace velmo::skin
