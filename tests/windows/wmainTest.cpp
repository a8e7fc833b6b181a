#include "windows/wmain.h"

#include "windows/MainWindowFixture.h"
#include "windows/TitleScroller.h"

namespace velmo {
namespace {

controls::MouseEvent LeftAt(double x, double y = 30)
{
    return test::LeftAt(x, y);
}

class MainWindow : public test::MainWindowFixture
{
protected:
    double PositionSeconds() const
    {
        return m_player.bass.channels.at(m_player.state.CurrentChannel).position;
    }

    wmain& m_window = m_fakes.window;
    PositionSlider& m_position = m_window.Position();
    VolumeSlider& m_volume = m_window.Volume();
};

TEST_F(MainWindow, LoadRestoresWhatTheLastRunLeft)
{
    m_player.Set("RTM", "X", "1500");
    m_player.Set("RTM", "Y", "15001");
    m_player.Set("RTM", "State", "MINIMIZED");
    m_player.Set("RTM", "TimeMode", "false");
    m_player.Set("RTM", "ShowPLMGR", "False");
    m_player.Set("Display", "Font.Size", "10,5");
    m_player.Set("Display", "Font.Color", "255");
    m_player.Set("Display", "Font.Bold", "True");
    m_player.Set("Display", "ShowIn", "Taskbar and System Tray");
    m_player.Set("Visualisation", "RefreshRateFPS", "50");
    m_player.Set("DSP\\Effects", "EQEnabled", "False");
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
    m_form.lblTime.MouseDown(test::Left);
    EXPECT_EQ(m_form.lblTime.Caption.Get(), "-01:30");
    EXPECT_EQ(m_player.Get("RTM", "TimeMode"), "False");
    m_form.lblTime.MouseDown(test::Right);
    m_form.lblTime.MouseDown(test::Left);
    EXPECT_EQ(m_form.lblTime.Caption.Get(), "00:10");
    EXPECT_EQ(m_player.Get("RTM", "TimeMode"), "True");
}

TEST_F(MainWindow, AClickOnTheBarSeeksToAWholeSecond)
{
    m_position.imgPositionBar_MouseDown(LeftAt(1000));
    EXPECT_TRUE(m_player.bass.calls.empty()) << "without a track the bar does nothing";

    m_player.tracks.PlayTrack("/m/a.mp3");
    const double step = 3255.0 / 100;
    const auto expect = [&](double x, double seconds) {
        m_position.imgPositionBar_MouseDown(LeftAt(x));
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
    m_form.imgPositionTicker.Left = start;
    m_position.imgPositionTicker_MouseDown(LeftAt(60));
    EXPECT_FALSE(m_form.tmrBASS.Enabled);
    m_position.imgPositionTicker_MouseMove(LeftAt(60 + 1627.5));
    m_position.imgPositionTicker_MouseMove(LeftAt(60 + 5000));
    EXPECT_NEAR(m_form.imgPositionTicker.Left, start + 1628, 1)
        << "past the end the last place stays";
    m_position.imgPositionTicker_MouseUp(LeftAt(60));
    EXPECT_TRUE(m_form.tmrBASS.Enabled);
    EXPECT_NEAR(PositionSeconds(), 50, 0.02);
    m_position.imgPositionTicker_MouseMove(LeftAt(500));
    EXPECT_NEAR(m_form.imgPositionTicker.Left, start + 1628, 2) << "let go";
}

TEST_F(MainWindow, TheTitleRunsAsARingAndTheWindowsTitleOnlyIfItIsWanted)
{
    TitleScroller scroller(m_form, m_player.settings, m_player.state);
    const auto titlesAfterTick = [&] {
        scroller.tmrScroll_Timer();
        return m_form.lblSongName.Caption.Get() + "|" + m_form.Caption.Get();
    };
    SetSongName(m_form, m_player.state, "éab ");
    EXPECT_EQ(titlesAfterTick(), "ab é|ab é");
    m_player.Set("Display", "ScrollTitle", "False");
    EXPECT_EQ(titlesAfterTick(), "b éa|éab ");
    SetSongName(m_form, m_player.state, "");
    EXPECT_EQ(titlesAfterTick(), "|");
    // It also decides whether the picture moves, whatever the resize has done.
    using enum controls::WindowState;
    for (const auto state : {Minimized, Normal}) {
        m_form.State = state;
        scroller.tmrScroll_Timer();
        EXPECT_EQ(m_form.tmrSpectrum.Enabled, state == Normal);
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
    m_player.Set("RTM", "ShowPL", "False");
    minimise();
    EXPECT_FALSE(m_player.playlist.Visible);
    m_player.Set("RTM", "ShowPL", "True");
    m_window.Form_Resize();
    EXPECT_FALSE(m_player.playlist.Visible) << "once only";
}

TEST_F(MainWindow, TheVolumeFollowsTheMiddleOfItsKnobAndIsRestored)
{
    controls::Image& ticker = m_form.imgVolumeTicker;
    const auto expect = [&](double clicked, double left, const char* tip, const char* kept) {
        m_volume.imgVolumeBar_MouseDown(LeftAt(clicked));
        EXPECT_EQ(ticker.Left, left);
        EXPECT_EQ(ticker.ToolTipText.Get(), tip);
        EXPECT_EQ(m_form.imgVolumeBar.ToolTipText.Get(), tip);
        EXPECT_EQ(m_player.Get("RTM", "Volume"), kept);
    };
    expect(0, 2355, "Volume  0%", "67.5");
    expect(1335, 3555, "Volume  100%", "1267.5");
    // The design place, and the default; in single precision two places show one less.
    expect(907.5, 3195, "Volume  70%", "907.5");
    expect(1215, 3502.5, "Volume  96%", "1215");
    expect(700, 2987.5, "Volume  52%", "700");

    m_volume.imgVolumeTicker_MouseDown(LeftAt(60));
    m_volume.imgVolumeTicker_MouseMove(LeftAt(5000));
    EXPECT_EQ(m_player.bass.volume, 1) << "held at the end";
    m_volume.imgVolumeTicker_MouseMove(LeftAt(60 - 1200));
    EXPECT_EQ(m_player.bass.volume, 0);
    EXPECT_EQ(m_player.Get("RTM", "Volume"), "700") << "not before the release";
    m_volume.imgVolumeTicker_MouseUp(LeftAt(60));
    EXPECT_EQ(m_player.Get("RTM", "Volume"), "67.5");
    m_volume.imgVolumeTicker_MouseMove(LeftAt(500));
    EXPECT_EQ(m_player.bass.volume, 0) << "let go";

    m_player.Set("RTM", "Volume", "1215");
    m_volume.Restore();
    EXPECT_EQ(ticker.Left, 3502.5);
    EXPECT_EQ(ticker.ToolTipText.Get(), "Volume 96%");
    m_player.Set("RTM", "Volume", "2000");
    m_volume.Restore();
    EXPECT_EQ(ticker.ToolTipText.Get(), "Volume 161%");
    EXPECT_FLOAT_EQ(m_player.bass.volume, 0.96F) << "the engine refuses more than all";
}

} // namespace
} // namespace velmo
