#include "windows/cMagneticWnd.h"

#include "support/FakeScreens.h"
#include "windows/BringOntoScreens.h"

#include <gmock/gmock.h>

namespace velmo {
namespace {

using ports::ScreenRect;

ScreenRect At(int left, int top, int width, int height)
{
    return {.left = left, .top = top, .right = left + width, .bottom = top + height};
}

TEST(SnapRules, TouchingNeedsACommonEdgeLineAndNoGap)
{
    const ScreenRect a = At(100, 100, 50, 40);
    const auto touches = [&](const ScreenRect& b) {
        EXPECT_EQ(RectsTouch(a, b), RectsTouch(b, a));
        return RectsTouch(a, b);
    };
    EXPECT_TRUE(touches(At(150, 110, 20, 20)));
    EXPECT_FALSE(touches(At(151, 110, 20, 20)));
    EXPECT_TRUE(touches(At(90, 140, 90, 20)));
    EXPECT_TRUE(touches(At(150, 140, 20, 20))) << "corner to corner";
    EXPECT_FALSE(touches(At(150, 141, 20, 20)));
    EXPECT_FALSE(touches(At(120, 120, 50, 50))) << "overlapping";
    EXPECT_TRUE(touches(At(120, 100, 50, 70))) << "overlapping, tops level";
    EXPECT_FALSE(touches(At(300, 100, 50, 40))) << "level, far away";
}

TEST(SnapRules, AnEdgeLessThanTheSnapWidthAwayIsCaught)
{
    constexpr int Stays = 77;
    const auto expect = [](const ScreenRect& moved, int dx, int dy) {
        SnapShift shift{.dx = Stays, .dy = Stays};
        SnapTest(moved, At(1000, 1000, 100, 100), 10, shift);
        EXPECT_EQ(shift.dx, dx) << moved.left << ", " << moved.top;
        EXPECT_EQ(shift.dy, dy) << moved.left << ", " << moved.top;
    };
    expect(At(1009, 1040, 40, 21), -9, Stays);
    expect(At(1010, 1040, 40, 21), Stays, Stays); // ten away
    expect(At(1091, 1040, 40, 200), 9, Stays);
    expect(At(951, 1040, 40, 200), 9, Stays);
    expect(At(900, 1040, 195, 21), 5, Stays);
    expect(At(1004, 1040, 99, 21), -4, Stays); // the left edge first
    expect(At(1030, 1104, 30, 30), Stays, -4);
    expect(At(1030, 967, 30, 30), Stays, 3);
    expect(At(1110, 1003, 50, 50), Stays, Stays); // too far beside
    expect(At(1003, 1110, 50, 50), Stays, Stays);
    expect(At(1109, 1003, 50, 50), -9, -3); // just in the strip
    expect(At(1105, 1105, 50, 50), -5, -5);
}

TEST(SnapRules, SizingMovesTheSizedEdgesAloneAndNeverTwice)
{
    using enum SizingEdge;
    // The second target is 12 away from where the edge came in.
    const ScreenRect targets[] = {At(205, 0, 100, 300), At(212, 0, 100, 300), At(0, 196, 90, 9)};
    /// A window from `left`, 100 to 200, 200 and where it is then.
    const auto expect = [&](SizingEdge edge, int left, const ScreenRect& place) {
        ScreenRect sized = At(left, 100, 200 - left, 100);
        SnapSizing(sized, edge, targets, 10);
        EXPECT_EQ(sized, place) << static_cast<int>(edge);
    };
    expect(Right, 100, {100, 100, 205, 200});
    expect(Left, 100, {100, 100, 200, 200});
    expect(Left, 93, {90, 100, 200, 200});
    expect(Bottom, 93, {93, 100, 200, 196});
    expect(BottomRight, 93, {93, 100, 205, 196});
    expect(TopLeft, 93, {90, 100, 200, 200});
}

/// Main window, equalizer under it, list manager under that; a playlist stands apart.
class Magnet : public ::testing::Test
{
protected:
    struct Window final : controls::Form
    {
        Window(const char* name, int left, int top, int width, int height)
            : Form(name, name, width * 15.0, height * 15.0, controls::BorderStyle::None)
        {
            PlaceAt(left, top);
        }
        void PlaceAt(int left, int top)
        {
            Left = left * 15.0;
            Top = top * 15.0;
        }
        ScreenRect Place() const
        {
            const auto pixels = [](double twips) { return static_cast<int>(twips / 15); };
            return At(pixels(Left), pixels(Top), pixels(Width), pixels(Height));
        }
    };

    Magnet()
    {
        m_magnet.AddWindow(&m_main);
        for (Window* child : {&m_list, &m_eq, &m_manager})
            m_magnet.AddWindow(child, &m_main);
    }

    /// Takes the window by its corner and drags it by that much; where it went.
    static ScreenRect Drag(Window& window, int dx, int dy)
    {
        const ScreenRect place = window.Place();
        const ports::ScreenPoint start{.x = place.left + 3, .y = place.top + 5};
        window.EnterSizeMove(start);
        ScreenRect moved = place;
        window.Moving({.x = start.x + dx / 2, .y = start.y + dy / 2}, moved);
        window.Moving({.x = start.x + dx, .y = start.y + dy}, moved);
        window.PlaceAt(moved.left, moved.top);
        window.ExitSizeMove();
        return moved;
    }

    test::FakeScreens m_screens;
    cMagneticWnd m_magnet{m_screens};
    Window m_main{"main", 300, 200, 265, 177};
    Window m_list{"list", 700, 300, 314, 490};
    Window m_eq{"eq", 300, 377, 265, 97};
    Window m_manager{"manager", 300, 474, 265, 138};
};

TEST_F(Magnet, WhatHasLeftTheBlockJoinsItAgainWhereItSnaps)
{
    Drag(m_eq, -340, 33); // the manager is no longer held by anything
    EXPECT_THAT(m_magnet.BlockOf(m_manager), testing::ElementsAre(&m_manager));
    Drag(m_eq, 340 + 5, -33 + 9);
    EXPECT_EQ(m_eq.Place(), At(300, 377, 265, 97));
    EXPECT_THAT(m_magnet.BlockOf(m_manager), testing::ElementsAre(&m_main, &m_eq, &m_manager));
}

TEST_F(Magnet, StopsAtTheWorkAreaAndAtTheLastTargetInReach)
{
    EXPECT_EQ(Drag(m_list, 300, 0).right, 1014 + 300);
    EXPECT_EQ(Drag(m_list, -40 + 9, 0).right, 1280);
    EXPECT_EQ(Drag(m_list, -700, 0).right, 1280 - 700);

    // The work area wants the top at 0, a window that came later wants it at 6.
    Window high("high", 900, 6, 50, 50);
    m_magnet.AddWindow(&high);
    EXPECT_EQ(Drag(m_list, 370, -298).top, 6);
    m_magnet.RemoveWindow(&high);
    EXPECT_EQ(Drag(m_list, 0, -1).top, 0);

    // A window that fills the screen counts as the whole work area.
    high.Zoomed = true;
    m_magnet.AddWindow(&high);
    EXPECT_EQ(Drag(m_list, 0, 8).top, 0);
}

TEST_F(Magnet, CarriedWindowPullsTheWholeBlock)
{
    // The playlist's top edge is caught by the manager's bottom edge, which is carried.
    m_list.PlaceAt(400, 612 + 20);
    m_magnet.CheckGlueing();
    EXPECT_EQ(Drag(m_main, 0, 14).top, 220);
    EXPECT_EQ(m_manager.Place().bottom, m_list.Place().top);
}

TEST_F(Magnet, ScaleWidensTheSnapAndKeepsEdgesExact)
{
    for (const double scale : {1.25, 1.5, 1.1, 2.0}) {
        m_screens.scale = scale;
        const controls::PixelGrid grid(scale);
        for (Window* window : {&m_main, &m_list, &m_eq, &m_manager}) {
            window->Left = grid.ToTwips(3000);
            window->Width = grid.ToTwips(grid.FromLogical(265));
            window->Height = grid.ToTwips(grid.FromLogical(97));
        }
        m_main.Left = grid.ToTwips(333);
        m_main.Top = grid.ToTwips(501);
        m_eq.Left = m_main.Left + m_main.Width;
        m_eq.Top = m_main.Top.Get();
        m_magnet.CheckGlueing();
        m_main.EnterSizeMove({});
        const auto leftAfter = [&](int dx) {
            ScreenRect moved;
            m_main.Moving({.x = dx, .y = 10}, moved);
            return moved.left;
        };
        EXPECT_EQ(leftAfter(77), 410);
        EXPECT_EQ(m_eq.Left, grid.ToTwips(410) + m_main.Width) << scale; // equal to the last bit
        const int reach = grid.FromLogical(10);
        EXPECT_EQ(leftAfter(-333 + reach - 1), 0);
        EXPECT_EQ(leftAfter(-333 + reach), reach);
        m_main.ExitSizeMove();
    }
}

TEST_F(Magnet, WindowsOutOfReachComeBackAsABlock)
{
    for (Window* child : {&m_list, &m_eq, &m_manager})
        child->Owner = &m_main; // and hidden: where they are matters to nobody
    const auto expect = [&](const char* how, int left, int top, int leftAfter, int topAfter) {
        m_main.PlaceAt(left, top);
        m_eq.PlaceAt(left, m_main.Place().bottom);
        BringOntoScreens(m_magnet, m_screens);
        EXPECT_EQ(m_main.Place(), At(leftAfter, topAfter, 265, 177)) << how;
        EXPECT_EQ(m_eq.Place(), At(leftAfter, topAfter + 177, 265, 97)) << how;
    };
    expect("half off the right edge", 1150, 300, 1150, 300);
    expect("a grip of eight pixels", 1272, 300, 1272, 300);
    expect("beyond the right edge", 1273, 300, 1015, 300);
    expect("under the lower edge", 100, 2000, 100, 823);
    expect("the grip above the screen", 100, -20, 100, 0);
    m_screens.screen = At(-800, 0, 800, 600);
    expect("on a screen to the left", -1900, 50, -800, 50);
    m_screens.screen = At(0, 0, 200, 50);
    expect("larger than the screen", 500, 500, 0, 0);
    EXPECT_EQ(m_list.Place(), At(700, 300, 314, 490));
}

} // namespace
} // namespace velmo
