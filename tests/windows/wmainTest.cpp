#include "windows/wmain.h"

#include "support/FakePlayer.h"
#include "windows/TitleScroller.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

class FakeDesktop final : public ports::Desktop
{
public:
    Size VirtualSize() override { return {.width = 19200, .height = 15000}; }
};

controls::MouseEvent LeftAt(double x)
{
    return {.button = controls::MouseButton::Left, .shift = 0, .x = x, .y = 30};
}

class MainWindow : public ::testing::Test
{
protected:
    MainWindow() { m_player.AddSound("/m/a.mp3", {.seconds = 100}); }

    double PositionSeconds() const
    {
        return m_player.bass.channels.at(m_player.state.CurrentChannel).position;
    }

    test::FakePlayer m_player;
    FakeDesktop m_desktop;
    wmain m_window{m_player.wmain,
                   m_player.playlist,
                   m_player.table,
                   m_player.settings,
                   m_desktop,
                   m_player.state,
                   m_player.monitor};
};

TEST_F(MainWindow, LoadRestoresWhatTheLastRunLeft)
{
    m_player.settings.WriteSetting("RTM", "X", "1500");
    m_player.settings.WriteSetting("RTM", "Y", "15001");
    m_player.settings.WriteSetting("RTM", "State", "MINIMIZED");
    m_player.settings.WriteSetting("RTM", "TimeMode", "false");
    m_player.settings.WriteSetting("Display", "Font.Size", "10,5");
    m_player.settings.WriteSetting("Display", "Font.Color", "255");
    m_player.settings.WriteSetting("Display", "Font.Bold", "True");
    bool marked = false;
    m_window.Load([&] { marked = true; });
    EXPECT_TRUE(marked);
    EXPECT_EQ(m_player.wmain.Left, 1500);
    EXPECT_EQ(m_player.wmain.Top, 0) << "beyond the desktop is not applied";
    EXPECT_EQ(m_player.wmain.State.Get(), controls::WindowState::Minimized);
    EXPECT_EQ(m_player.playlist.Left, 1500 + 3975);
    EXPECT_TRUE(m_player.wmain.Loaded);
    EXPECT_FALSE(m_player.state.TimeElapsedMode);
    EXPECT_EQ(m_player.wmain.lblSongName.Font.Get(),
              (controls::Font{.name = "Tahoma", .sizePoints = 10.5, .weight = 700}));
    EXPECT_EQ(m_player.wmain.lblSongName.ForeColor, 255U);
    EXPECT_EQ(m_player.wmain.lblSongName.Caption.Get(),
              "Velmo Player - Made to be heard!    ***  ");
}

TEST_F(MainWindow, APressOnTheTimeFlipsItsModeAndKeepsIt)
{
    m_player.tracks.PlayTrack("/m/a.mp3");
    m_player.bass.Advance(10);
    m_window.lblTime_MouseDown(LeftAt(0));
    EXPECT_EQ(m_player.wmain.lblTime.Caption.Get(), "-01:30");
    EXPECT_EQ(m_player.settings.ReadSetting("RTM", "TimeMode", ""), "False");
    m_window.lblTime_MouseDown({.button = controls::MouseButton::Right});
    m_window.lblTime_MouseDown(LeftAt(0));
    EXPECT_EQ(m_player.wmain.lblTime.Caption.Get(), "00:10");
    EXPECT_EQ(m_player.settings.ReadSetting("RTM", "TimeMode", ""), "True");
}

TEST_F(MainWindow, AClickOnTheBarSeeksToAWholeSecond)
{
    m_window.imgPositionBar_MouseDown(LeftAt(1000));
    EXPECT_TRUE(m_player.bass.calls.empty()) << "without a track the bar does nothing";

    m_player.tracks.PlayTrack("/m/a.mp3");
    const double step = 3255.0 / 100;
    const struct
    {
        double x;
        double seconds;
    } cases[] = {
        {0,             0 },
        {step * 20 + 5, 20},
        {3495,          99}
    };
    for (const auto& c : cases) {
        m_window.imgPositionBar_MouseDown(LeftAt(c.x));
        EXPECT_NEAR(PositionSeconds(), c.seconds, 0.02) << c.x;
        EXPECT_NEAR(m_player.wmain.imgPositionTicker.Left - m_player.wmain.imgPositionBar.Left,
                    c.seconds * step,
                    1.0);
    }
    EXPECT_EQ(m_player.wmain.lblTime.Caption.Get(), "01:39");
}

TEST_F(MainWindow, ADraggedKnobStaysInItsRangeAndSeeksWhenLetGo)
{
    m_player.tracks.PlayTrack("/m/a.mp3");
    const double start = m_player.wmain.imgPositionBar.Left;
    m_player.wmain.imgPositionTicker.Left = start;
    m_window.imgPositionTicker_MouseDown(LeftAt(60));
    EXPECT_FALSE(m_player.wmain.tmrBASS.Enabled);
    m_window.imgPositionTicker_MouseMove(LeftAt(60 + 1627.5));
    EXPECT_NEAR(m_player.wmain.imgPositionTicker.Left, start + 1628, 1);
    m_window.imgPositionTicker_MouseMove(LeftAt(60 + 5000));
    EXPECT_NEAR(m_player.wmain.imgPositionTicker.Left, start + 1628, 1)
        << "past the end the last place stays";
    m_window.imgPositionTicker_MouseUp(LeftAt(60));
    EXPECT_TRUE(m_player.wmain.tmrBASS.Enabled);
    EXPECT_NEAR(PositionSeconds(), 50, 0.02);
    m_window.imgPositionTicker_MouseMove(LeftAt(500));
    EXPECT_NEAR(m_player.wmain.imgPositionTicker.Left, start + 1628, 2) << "let go";
}

TEST_F(MainWindow, AKeyOfTheWindowActsOnlyWhenItIsReleasedOverIt)
{
    const auto releasedAt = [](double x, double y) {
        return controls::MouseEvent{
            .button = controls::MouseButton::Left, .shift = 0, .x = x, .y = y};
    };
    EXPECT_TRUE(ReleasedInside(m_player.wmain.imgClose, releasedAt(195, 0)));
    EXPECT_FALSE(ReleasedInside(m_player.wmain.imgClose, releasedAt(196, 0)));
    EXPECT_FALSE(ReleasedInside(m_player.wmain.imgClose, releasedAt(10, -1)));
    m_window.imgMinimize_MouseUp(releasedAt(10, 181));
    EXPECT_EQ(m_player.wmain.State.Get(), controls::WindowState::Normal);
    m_window.imgMinimize_MouseUp(releasedAt(10, 180));
    EXPECT_EQ(m_player.wmain.State.Get(), controls::WindowState::Minimized);
}

TEST_F(MainWindow, TheTitleRunsAsARingAndTheWindowsTitleOnlyIfItIsWanted)
{
    TitleScroller scroller(m_player.wmain, m_player.settings, m_player.state);
    SetSongName(m_player.wmain,
                m_player.state,
                "\xC3\xA9"
                "ab ");
    scroller.tmrScroll_Timer();
    EXPECT_EQ(m_player.wmain.lblSongName.Caption.Get(), "ab \xC3\xA9");
    EXPECT_EQ(m_player.wmain.Caption.Get(), "ab \xC3\xA9");
    m_player.settings.WriteSetting("Display", "ScrollTitle", "False");
    scroller.tmrScroll_Timer();
    EXPECT_EQ(m_player.wmain.lblSongName.Caption.Get(),
              "b \xC3\xA9"
              "a");
    EXPECT_EQ(m_player.wmain.Caption.Get(),
              "\xC3\xA9"
              "ab ");
    for (const char* same : {"", "x"}) {
        SetSongName(m_player.wmain, m_player.state, same);
        scroller.tmrScroll_Timer();
        EXPECT_EQ(m_player.wmain.lblSongName.Caption.Get(), same);
    }
}

} // namespace
} // namespace velmo
