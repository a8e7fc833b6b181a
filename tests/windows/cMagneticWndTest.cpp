#include "windows/cMagneticWnd.h"

#include "support/FakeScreens.h"
#include "windows/BringOntoScreens.h"

#include <gmock/gmock.h>

#include <optional>

namespace velmo {
namespace {

using ports::ScreenRect;

ScreenRect At(int left, int top, int width, int height)
{
    return {.left = left, .top = top, .right = left + width, .bottom = top + height};
}

ScreenRect Edges(int left, int top, int right, int bottom)
{
    return {.left = left, .top = top, .right = right, .bottom = bottom};
}

TEST(SnapRules, TouchingNeedsACommonEdgeLineAndNoGap)
{
    const ScreenRect a = At(100, 100, 50, 40);
    struct Case
    {
        const char* how;
        ScreenRect b;
        bool touch;
    };
    const Case cases[] = {
        {"right of it",         At(150,                  110,                                                          20, 20), true},
        {"a pixel further",                  At(151,                                     110,                                                                                                 20, 20), false},
        {"under it",At(90,140,90, 20), true},
        {"corner to corner",                At(150,                                       140,                                                                                          20, 20), true},
        {"corner, a pixel off",                  At(150,                                                          141,                                                                                                                                                                            20, 20), false},
        {"overlapping",                     At(120,                           120,                                                                  50, 50), false},
        {"overlapping, tops level",                   At(120,                                       100,      50, 70), true},
        {"level, far away", At(300, 100, 50, 40), false},
        {"the same place",                  a,                                    true                                                                                               },
    };
    for (const Case& c : cases) {
        EXPECT_EQ(RectsTouch(a, c.b), c.touch) << c.how;
        EXPECT_EQ(RectsTouch(c.b, a), c.touch) << c.how;
    }
}

TEST(SnapRules, AnEdgeLessThanTheSnapWidthAwayIsCaught)
{
    const ScreenRect target = At(1000, 1000, 100, 100);
    struct Case
    {
        const char* how;
        ScreenRect moved;
        int dx; ///< 77 where it is to stay as it was
        int dy;
    };
    const Case cases[] = {
        {"left to left",      At(1009, 1040, 40,  21),  -9, 77},
        {"ten away",          At(1010, 1040, 40,  21),  77, 77},
        {"left to right",     At(1091, 1040, 40,  200), 9,  77},
        {"right to left",     At(951,  1040, 40,  200), 9,  77},
        {"right to right",    At(900,  1040, 195, 21),  5,  77},
        {"left edge first",   At(1004, 1040, 99,  21),  -4, 77},
        {"top to bottom",     At(1030, 1104, 30,  30),  77, -4},
        {"bottom to top",     At(1030, 967,  30,  30),  77, 3 },
        {"too far beside",    At(1110, 1003, 50,  50),  77, 77},
        {"just in the strip", At(1109, 1003, 50,  50),  -9, -3},
        {"corners",           At(1105, 1105, 50,  50),  -5, -5},
    };
    for (const Case& c : cases) {
        SnapShift shift{.dx = 77, .dy = 77};
        SnapTest(c.moved, target, 10, shift);
        EXPECT_EQ(shift.dx, c.dx) << c.how;
        EXPECT_EQ(shift.dy, c.dy) << c.how;
    }
}

TEST(SnapRules, SizingMovesTheSizedEdgesAloneAndNeverTwice)
{
    using enum SizingEdge;
    const std::vector<ScreenRect> targets = {
        At(205, 0, 100, 300), At(212, 0, 100, 300), At(0, 196, 90, 9)};
    struct Case
    {
        SizingEdge edge;
        ScreenRect in;
        ScreenRect out;
    };
    const ScreenRect in = Edges(100, 100, 200, 200);
    const ScreenRect beside = Edges(93, 100, 200, 200);
    const Case cases[] = {
  // The second target is 12 away from where the edge came in.
        {Right,     in,      Edges(100, 100, 205, 200)},
        {Left,      in,         in                 },
        {Left,  beside,Edges(90,100, 200, 200)},
        {Bottom,  beside,   Edges(93,                   100, 200, 196)},
        {BottomRight,     beside,            Edges(93,                100, 205, 196)},
        {TopLeft, beside,   Edges(90,100, 200, 200)},
        {Top,         beside,      beside    },
    };
    for (const Case& c : cases) {
        ScreenRect sized = c.in;
        SnapSizing(sized, c.edge, targets, 10);
        EXPECT_EQ(sized, c.out) << static_cast<int>(c.edge);
    }
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
    ScreenRect Drag(Window& window, int dx, int dy, bool letGo = true)
    {
        const ScreenRect place = window.Place();
        const ports::ScreenPoint start{.x = place.left + 3, .y = place.top + 5};
        window.EnterSizeMove(start);
        ScreenRect moved = place;
        window.Moving({.x = start.x + dx / 2, .y = start.y + dy / 2}, moved);
        window.Moving({.x = start.x + dx, .y = start.y + dy}, moved);
        window.Left = moved.left * 15.0;
        window.Top = moved.top * 15.0;
        if (letGo)
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

TEST_F(Magnet, MainWindowCarriesTheChainAndAChildLeavesAlone)
{
    EXPECT_EQ(Drag(m_main, 40, 33).left, 340);
    EXPECT_EQ(m_eq.Place(), At(340, 410, 265, 97));
    EXPECT_EQ(m_manager.Place(), At(340, 507, 265, 138));
    EXPECT_EQ(m_list.Place(), At(700, 300, 314, 490));

    Drag(m_eq, -300, 0); // the manager is no longer held by anything
    EXPECT_EQ(m_main.Place(), At(340, 233, 265, 177));
    Drag(m_main, 50, 0);
    EXPECT_EQ(m_eq.Place(), At(40, 410, 265, 97));
    EXPECT_EQ(m_manager.Place(), At(340, 507, 265, 138));

    // Back to within nine pixels of the main window, it is part of the block again.
    Drag(m_eq, 350 + 5, 9);
    EXPECT_EQ(m_eq.Place(), At(390, 410, 265, 97));
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
    m_list.Top = 15.0 * (612 + 20);
    m_list.Left = 15.0 * 400;
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
        ScreenRect moved;
        m_main.EnterSizeMove({});
        m_main.Moving({.x = 77, .y = 10}, moved);
        EXPECT_EQ(moved.left, 410);
        EXPECT_EQ(m_eq.Left, grid.ToTwips(410) + m_main.Width) << scale; // equal to the last bit
        const int reach = grid.FromLogical(10);
        m_main.Moving({.x = -333 + reach - 1, .y = 10}, moved);
        EXPECT_EQ(moved.left, 0);
        m_main.Moving({.x = -333 + reach, .y = 10}, moved);
        EXPECT_EQ(moved.left, reach);
        m_main.ExitSizeMove();
    }
}

TEST_F(Magnet, RegistrationTellsWhatItRefuses)
{
    EXPECT_FALSE(m_magnet.AddWindow(nullptr));
    EXPECT_FALSE(m_magnet.AddWindow(&m_eq, &m_main));
    EXPECT_TRUE(m_magnet.RemoveWindow(&m_main));
    EXPECT_FALSE(m_magnet.RemoveWindow(&m_main));
    EXPECT_FALSE(m_main.Moving || m_main.EnterSizeMove || m_main.ExitSizeMove || m_main.SysCommand);
    // Without parents nothing is glued, however close it stands.
    EXPECT_THAT(m_magnet.BlockOf(m_eq), testing::ElementsAre(&m_eq));
}

TEST_F(Magnet, WindowsOutOfReachComeBackAsABlock)
{
    struct Case
    {
        const char* how;
        ScreenRect screen;
        ScreenRect from;
        ScreenRect to;
    };
    const auto main = [](int left, int top) { return At(left, top, 265, 177); };
    const ScreenRect full = At(0, 0, 1280, 1024);
    const ScreenRect leftOne = At(-800, 0, 800, 600);
    const ScreenRect tiny = At(0, 0, 200, 50);
    const Case cases[] = {
        {"half off the right edge",   full,    main(1150,  300),  main(1150, 300)},
        {"a grip of eight pixels",    full,    main(1272,  300),  main(1272, 300)},
        {"beyond the right edge",     full,    main(1273,  300),  main(1015, 300)},
        {"under the lower edge",      full,    main(100,   2000), main(100,  823)},
        {"the grip above the screen", full,    main(100,   -20),  main(100,  0)  },
        {"on a screen to the left",   leftOne, main(-1900, 50),   main(-800, 50) },
        {"larger than the screen",    tiny,    main(500,   500),  main(0,    0)  },
    };
    for (Window* child : {&m_list, &m_eq, &m_manager})
        child->Owner = &m_main; // and hidden: where they are matters to nobody
    for (const Case& c : cases) {
        m_screens.screens.front() = c.screen;
        m_main.Left = c.from.left * 15.0;
        m_main.Top = c.from.top * 15.0;
        m_eq.Left = m_main.Left.Get();
        m_eq.Top = m_main.Top + m_main.Height;
        BringOntoScreens(m_magnet, m_screens);
        EXPECT_EQ(m_main.Place(), c.to) << c.how;
        EXPECT_EQ(m_eq.Place(), At(c.to.left, c.to.bottom, 265, 97)) << c.how;
    }
    EXPECT_EQ(m_list.Place(), At(700, 300, 314, 490));
}

} // namespace
} // namespace velmo
