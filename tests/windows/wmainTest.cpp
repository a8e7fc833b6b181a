#include "windows/wmain.h"

#include "support/FakeMainWindow.h"
#include "windows/TitleScroller.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

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
    test::FakeMainWindow m_fakes{m_player};
    wmain& m_window = m_fakes.window;
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
    m_player.settings.WriteSetting("Visualisation", "RefreshRateFPS", "50");
    m_player.settings.WriteSetting("DSP\\Effects", "EQEnabled", "False");
    m_player.files.files["/app/zuvio.zfx"] = "ZVFX10\r\n 500 \r\n";
    m_player.fX.Ticker[1].Top = 800;
    m_player.fX.EqualizerOn = true;
    m_player.settings.WriteSetting("Display", "ShowIn", "Taskbar and System Tray");
    m_player.settings.WriteSetting("RTM", "ShowPLMGR", "False");
    std::string steps;
    const auto note = [&](const char* name) { return [&steps, name] { steps += name; }; };
    m_window.Load({.ShapeAndStick = note("shape "),
                   .MarkMainWindow = note("mark "),
                   .LoadPlaylist = note("playlist "),
                   .LoadListManager = [&] { steps += m_player.fX.Loaded ? "manager" : "early"; }});
    EXPECT_EQ(steps, "shape mark playlist manager");
    EXPECT_TRUE(m_fakes.systray.TrayIconShown);
    EXPECT_FALSE(m_fakes.frmListMGR.Visible);
    EXPECT_EQ(m_player.wmain.Left, 1500);
    EXPECT_EQ(m_player.wmain.Top, 0) << "beyond the desktop is not applied";
    EXPECT_EQ(m_player.wmain.State.Get(), controls::WindowState::Minimized);
    EXPECT_EQ(m_player.playlist.Left, 1500 + 3975);
    EXPECT_TRUE(m_player.wmain.Loaded);
    EXPECT_FALSE(m_player.state.TimeElapsedMode);
    EXPECT_EQ(m_player.wmain.tmrSpectrum.Interval, 20);
    EXPECT_EQ(m_player.spectrum.VisMode(), 1);
    EXPECT_EQ(m_player.fX.Ticker[0].Top, 500);
    EXPECT_EQ(m_player.fX.Ticker[1].Top, 700) << "a window that has just been made is flat";
    EXPECT_FALSE(m_player.fX.EqualizerOn);
    EXPECT_EQ(m_player.wmain.lblSongName.Font.Get(),
              (controls::Font{.name = "Tahoma", .sizePoints = 10.5, .weight = 700}));
    EXPECT_EQ(m_player.wmain.lblSongName.ForeColor, 255U);
    EXPECT_EQ(m_player.playlist.pl.Font.Get(), m_player.wmain.lblSongName.Font.Get());
    EXPECT_EQ(m_player.playlist.pl.ForeColor, 255U);
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
    m_window.Position().imgPositionBar_MouseDown(LeftAt(1000));
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
        m_window.Position().imgPositionBar_MouseDown(LeftAt(c.x));
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
    m_window.Position().imgPositionTicker_MouseDown(LeftAt(60));
    EXPECT_FALSE(m_player.wmain.tmrBASS.Enabled);
    m_window.Position().imgPositionTicker_MouseMove(LeftAt(60 + 1627.5));
    EXPECT_NEAR(m_player.wmain.imgPositionTicker.Left, start + 1628, 1);
    m_window.Position().imgPositionTicker_MouseMove(LeftAt(60 + 5000));
    EXPECT_NEAR(m_player.wmain.imgPositionTicker.Left, start + 1628, 1)
        << "past the end the last place stays";
    m_window.Position().imgPositionTicker_MouseUp(LeftAt(60));
    EXPECT_TRUE(m_player.wmain.tmrBASS.Enabled);
    EXPECT_NEAR(PositionSeconds(), 50, 0.02);
    m_window.Position().imgPositionTicker_MouseMove(LeftAt(500));
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
    // It also decides whether the picture moves, whatever the resize has done.
    for (const auto state : {controls::WindowState::Minimized, controls::WindowState::Normal}) {
        m_player.wmain.State = state;
        scroller.tmrScroll_Timer();
        EXPECT_EQ(m_player.wmain.tmrSpectrum.Enabled, state == controls::WindowState::Normal);
    }
    for (const char* same : {"", "x"}) {
        SetSongName(m_player.wmain, m_player.state, same);
        scroller.tmrScroll_Timer();
        EXPECT_EQ(m_player.wmain.lblSongName.Caption.Get(), same);
    }
}

TEST_F(MainWindow, MinimisedByItsButtonItHidesThePlaylistUntilItIsBack)
{
    const auto minimise = [&] {
        m_player.playlist.Show();
        m_window.imgMinimize_MouseUp(LeftAt(10));
        EXPECT_FALSE(m_player.playlist.Visible);
        m_window.Form_Resize();
        EXPECT_FALSE(m_player.playlist.Visible) << "still minimised";
        m_player.wmain.State = controls::WindowState::Normal;
        m_window.Form_Resize();
    };
    minimise();
    EXPECT_TRUE(m_player.playlist.Visible);
    m_player.settings.WriteSetting("RTM", "ShowPL", "False");
    minimise();
    EXPECT_FALSE(m_player.playlist.Visible);
    m_player.settings.WriteSetting("RTM", "ShowPL", "True");
    m_window.Form_Resize();
    EXPECT_FALSE(m_player.playlist.Visible) << "once only";
}

/// Ends of the bar, its design place, the default and the two places where single precision shows
/// one less.
TEST_F(MainWindow, TheVolumeFollowsTheMiddleOfItsKnob)
{
    const struct
    {
        double x; ///< of a click on the bar
        double left;
        const char* tip;
        const char* kept;
    } cases[] = {
        {0,     2355,   "Volume  0%",   "67.5"  },
        {1335,  3555,   "Volume  100%", "1267.5"},
        {907.5, 3195,   "Volume  70%",  "907.5" },
        {1215,  3502.5, "Volume  96%",  "1215"  },
        {700,   2987.5, "Volume  52%",  "700"   },
    };
    VolumeSlider& volume = m_window.Volume();
    for (const auto& c : cases) {
        volume.imgVolumeBar_MouseDown(LeftAt(c.x));
        EXPECT_EQ(m_player.wmain.imgVolumeTicker.Left, c.left);
        EXPECT_EQ(m_player.wmain.imgVolumeTicker.ToolTipText.Get(), c.tip);
        EXPECT_EQ(m_player.wmain.imgVolumeBar.ToolTipText.Get(), c.tip);
        EXPECT_EQ(m_player.settings.ReadSetting("RTM", "Volume", ""), c.kept);
    }
    volume.imgVolumeTicker_MouseDown(LeftAt(60));
    volume.imgVolumeTicker_MouseMove(LeftAt(5000));
    EXPECT_EQ(m_player.bass.volume, 1) << "held at the end";
    volume.imgVolumeTicker_MouseMove(LeftAt(60 - 1200));
    EXPECT_EQ(m_player.bass.volume, 0);
    EXPECT_EQ(m_player.settings.ReadSetting("RTM", "Volume", ""), "700")
        << "not before the release";
    volume.imgVolumeTicker_MouseUp(LeftAt(60));
    EXPECT_EQ(m_player.settings.ReadSetting("RTM", "Volume", ""), "67.5");
    volume.imgVolumeTicker_MouseMove(LeftAt(500));
    EXPECT_EQ(m_player.bass.volume, 0) << "let go";

    // At the load: from the setting, plain; what the engine refuses stays as it was.
    m_player.settings.WriteSetting("RTM", "Volume", "1215");
    volume.Restore();
    EXPECT_EQ(m_player.wmain.imgVolumeTicker.Left, 3502.5);
    EXPECT_EQ(m_player.wmain.imgVolumeTicker.ToolTipText.Get(), "Volume 96%");
    EXPECT_FLOAT_EQ(m_player.bass.volume, 0.96F);
    m_player.settings.WriteSetting("RTM", "Volume", "2000");
    volume.Restore();
    EXPECT_EQ(m_player.wmain.imgVolumeTicker.ToolTipText.Get(), "Volume 161%");
    EXPECT_FLOAT_EQ(m_player.bass.volume, 0.96F);
}

} // namespace
} // namespace velmo
