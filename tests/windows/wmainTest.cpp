#include "windows/wmain.h"

#include "support/FakeMainWindow.h"
#include "windows/TitleScroller.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

constexpr controls::MouseEvent LeftAt(double x, double y = 30)
{
    return {.button = controls::MouseButton::Left, .shift = 0, .x = x, .y = y};
}

class MainWindow : public ::testing::Test
{
protected:
    MainWindow() { m_player.AddSound("/m/a.mp3", {.seconds = 100}); }

    double PositionSeconds() const
    {
        return m_player.bass.channels.at(m_player.state.CurrentChannel).position;
    }
    void Set(const char* section, const char* key, const char* value)
    {
        m_player.settings.WriteSetting(section, key, value);
    }
    std::string Get(const char* section, const char* key)
    {
        return m_player.settings.ReadSetting(section, key, "");
    }

    test::FakePlayer m_player;
    test::FakeMainWindow m_fakes{m_player};
    forms::wmain& m_form = m_player.wmain;
    wmain& m_window = m_fakes.window;
};

TEST_F(MainWindow, LoadRestoresWhatTheLastRunLeft)
{
    Set("RTM", "X", "1500");
    Set("RTM", "Y", "15001");
    Set("RTM", "State", "MINIMIZED");
    Set("RTM", "TimeMode", "false");
    Set("RTM", "ShowPLMGR", "False");
    Set("Display", "Font.Size", "10,5");
    Set("Display", "Font.Color", "255");
    Set("Display", "Font.Bold", "True");
    Set("Display", "ShowIn", "Taskbar and System Tray");
    Set("Visualisation", "RefreshRateFPS", "50");
    Set("DSP\\Effects", "EQEnabled", "False");
    m_player.files.files["/app/zuvio.zfx"] = "ZVFX10\r\n 500 \r\n";
    m_player.fX.Ticker[1].Top = 800;
    m_player.fX.EqualizerOn = true;
    std::string steps;
    const auto note = [&](const char* name) { return [&steps, name] { steps += name; }; };
    m_window.Load({.ShapeAndStick = note("shape "),
                   .MarkMainWindow = note("mark "),
                   .LoadPlaylist = note("playlist "),
                   .LoadListManager = [&] { steps += m_player.fX.Loaded ? "manager" : "early"; }});
    EXPECT_EQ(steps, "shape mark playlist manager");
    EXPECT_TRUE(m_fakes.systray.TrayIconShown);
    EXPECT_FALSE(m_fakes.frmListMGR.Visible);
    EXPECT_EQ(m_form.Left, 1500);
    EXPECT_EQ(m_form.Top, 0) << "beyond the desktop is not applied";
    EXPECT_EQ(m_form.State.Get(), controls::WindowState::Minimized);
    EXPECT_EQ(m_player.playlist.Left, 1500 + 3975);
    EXPECT_TRUE(m_form.Loaded);
    EXPECT_FALSE(m_form.tmrBASS.Enabled || m_player.playlist.tmrInfo.Enabled) << "at rest as yet";
    EXPECT_FALSE(m_player.state.TimeElapsedMode);
    EXPECT_EQ(m_form.tmrSpectrum.Interval, 20);
    EXPECT_EQ(m_player.fX.Ticker[0].Top, 500);
    EXPECT_EQ(m_player.fX.Ticker[1].Top, 700) << "a window that has just been made is flat";
    EXPECT_FALSE(m_player.fX.EqualizerOn);
    EXPECT_EQ(m_form.lblSongName.Font.Get(),
              (controls::Font{.name = "Tahoma", .sizePoints = 10.5, .weight = 700}));
    EXPECT_EQ(m_form.lblSongName.ForeColor, 255U);
    EXPECT_EQ(m_player.playlist.pl.Font.Get(), m_form.lblSongName.Font.Get());
    EXPECT_EQ(m_player.playlist.pl.ForeColor, 255U);
    EXPECT_EQ(m_form.lblSongName.Caption.Get(), "Velmo Player - Made to be heard!    ***  ");
}

TEST_F(MainWindow, APressOnTheTimeFlipsItsModeAndKeepsIt)
{
    m_player.tracks.PlayTrack("/m/a.mp3");
    m_player.bass.Advance(10);
    m_window.lblTime_MouseDown(LeftAt(0));
    EXPECT_EQ(m_form.lblTime.Caption.Get(), "-01:30");
    EXPECT_EQ(Get("RTM", "TimeMode"), "False");
    m_window.lblTime_MouseDown({.button = controls::MouseButton::Right});
    m_window.lblTime_MouseDown(LeftAt(0));
    EXPECT_EQ(m_form.lblTime.Caption.Get(), "00:10");
    EXPECT_EQ(Get("RTM", "TimeMode"), "True");
}

TEST_F(MainWindow, AClickOnTheBarSeeksToAWholeSecond)
{
    m_window.Position().imgPositionBar_MouseDown(LeftAt(1000));
    EXPECT_TRUE(m_player.bass.calls.empty()) << "without a track the bar does nothing";

    m_player.tracks.PlayTrack("/m/a.mp3");
    const double step = 3255.0 / 100;
    const auto expect = [&](double x, double seconds) {
        m_window.Position().imgPositionBar_MouseDown(LeftAt(x));
        EXPECT_NEAR(PositionSeconds(), seconds, 0.02) << x;
        EXPECT_NEAR(
            m_form.imgPositionTicker.Left - m_form.imgPositionBar.Left, seconds * step, 1.0);
    };
    expect(0, 0);
    expect(step * 20 + 5, 20);
    expect(3495, 99);
    EXPECT_EQ(m_form.lblTime.Caption.Get(), "01:39");
}

TEST_F(MainWindow, ADraggedKnobStaysInItsRangeAndSeeksWhenLetGo)
{
    m_player.tracks.PlayTrack("/m/a.mp3");
    const double start = m_form.imgPositionBar.Left;
    PositionSlider& slider = m_window.Position();
    m_form.imgPositionTicker.Left = start;
    slider.imgPositionTicker_MouseDown(LeftAt(60));
    EXPECT_FALSE(m_form.tmrBASS.Enabled);
    slider.imgPositionTicker_MouseMove(LeftAt(60 + 1627.5));
    slider.imgPositionTicker_MouseMove(LeftAt(60 + 5000));
    EXPECT_NEAR(m_form.imgPositionTicker.Left, start + 1628, 1)
        << "past the end the last place stays";
    slider.imgPositionTicker_MouseUp(LeftAt(60));
    EXPECT_TRUE(m_form.tmrBASS.Enabled);
    EXPECT_NEAR(PositionSeconds(), 50, 0.02);
    slider.imgPositionTicker_MouseMove(LeftAt(500));
    EXPECT_NEAR(m_form.imgPositionTicker.Left, start + 1628, 2) << "let go";
}

TEST_F(MainWindow, AKeyOfTheWindowActsOnlyWhenItIsReleasedOverIt)
{
    EXPECT_TRUE(ReleasedInside(m_form.imgClose, LeftAt(195, 180)));
    EXPECT_FALSE(ReleasedInside(m_form.imgClose, LeftAt(196, 0)));
    EXPECT_FALSE(ReleasedInside(m_form.imgClose, LeftAt(10, -1)));
    m_window.imgMinimize_MouseUp(LeftAt(10, 181));
    EXPECT_EQ(m_form.State.Get(), controls::WindowState::Normal);
}

TEST_F(MainWindow, TheTitleRunsAsARingAndTheWindowsTitleOnlyIfItIsWanted)
{
    TitleScroller scroller(m_form, m_player.settings, m_player.state);
    const auto titlesAfterTick = [&] {
        scroller.tmrScroll_Timer();
        return m_form.lblSongName.Caption.Get() + "|" + m_form.Caption.Get();
    };
    const std::string accent = "\xC3\xA9";
    SetSongName(m_form, m_player.state, accent + "ab ");
    EXPECT_EQ(titlesAfterTick(), "ab " + accent + "|ab " + accent);
    Set("Display", "ScrollTitle", "False");
    EXPECT_EQ(titlesAfterTick(), "b " + accent + "a|" + accent + "ab ");
    SetSongName(m_form, m_player.state, "");
    EXPECT_EQ(titlesAfterTick(), "|");
    // It also decides whether the picture moves, whatever the resize has done.
    for (const auto state : {controls::WindowState::Minimized, controls::WindowState::Normal}) {
        m_form.State = state;
        scroller.tmrScroll_Timer();
        EXPECT_EQ(m_form.tmrSpectrum.Enabled, state == controls::WindowState::Normal);
    }
}

TEST_F(MainWindow, MinimisedByItsButtonItHidesThePlaylistUntilItIsBack)
{
    const auto minimise = [&] {
        m_player.playlist.Show();
        m_window.imgMinimize_MouseUp(LeftAt(10));
        m_window.Form_Resize();
        EXPECT_FALSE(m_player.playlist.Visible) << "still minimised";
        m_form.State = controls::WindowState::Normal;
        m_window.Form_Resize();
    };
    minimise();
    EXPECT_TRUE(m_player.playlist.Visible);
    Set("RTM", "ShowPL", "False");
    minimise();
    EXPECT_FALSE(m_player.playlist.Visible);
    Set("RTM", "ShowPL", "True");
    m_window.Form_Resize();
    EXPECT_FALSE(m_player.playlist.Visible) << "once only";
}

TEST_F(MainWindow, TheVolumeFollowsTheMiddleOfItsKnob)
{
    VolumeSlider& volume = m_window.Volume();
    const auto expect = [&](double clicked, double left, const char* tip, const char* kept) {
        volume.imgVolumeBar_MouseDown(LeftAt(clicked));
        EXPECT_EQ(m_form.imgVolumeTicker.Left, left);
        EXPECT_EQ(m_form.imgVolumeTicker.ToolTipText.Get(), tip);
        EXPECT_EQ(m_form.imgVolumeBar.ToolTipText.Get(), tip);
        EXPECT_EQ(Get("RTM", "Volume"), kept);
    };
    expect(0, 2355, "Volume  0%", "67.5");
    expect(1335, 3555, "Volume  100%", "1267.5");
    // The design place, and the default; in single precision two places show one less.
    expect(907.5, 3195, "Volume  70%", "907.5");
    expect(1215, 3502.5, "Volume  96%", "1215");
    expect(700, 2987.5, "Volume  52%", "700");

    volume.imgVolumeTicker_MouseDown(LeftAt(60));
    volume.imgVolumeTicker_MouseMove(LeftAt(5000));
    EXPECT_EQ(m_player.bass.volume, 1) << "held at the end";
    volume.imgVolumeTicker_MouseMove(LeftAt(60 - 1200));
    EXPECT_EQ(m_player.bass.volume, 0);
    EXPECT_EQ(Get("RTM", "Volume"), "700") << "not before the release";
    volume.imgVolumeTicker_MouseUp(LeftAt(60));
    EXPECT_EQ(Get("RTM", "Volume"), "67.5");
    volume.imgVolumeTicker_MouseMove(LeftAt(500));
    EXPECT_EQ(m_player.bass.volume, 0) << "let go";
}

TEST_F(MainWindow, AtTheLoadTheVolumeIsThatOfTheSettingsUnlessTheEngineRefusesIt)
{
    Set("RTM", "Volume", "1215");
    m_window.Volume().Restore();
    EXPECT_EQ(m_form.imgVolumeTicker.Left, 3502.5);
    EXPECT_EQ(m_form.imgVolumeTicker.ToolTipText.Get(), "Volume 96%");
    EXPECT_FLOAT_EQ(m_player.bass.volume, 0.96F);
    Set("RTM", "Volume", "2000");
    m_window.Volume().Restore();
    EXPECT_EQ(m_form.imgVolumeTicker.ToolTipText.Get(), "Volume 161%");
    EXPECT_FLOAT_EQ(m_player.bass.volume, 0.96F);
}

} // namespace
} // namespace velmo
