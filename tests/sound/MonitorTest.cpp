#include "support/FakePlayer.h"

#include <gmock/gmock.h>

namespace velmo {
namespace {

class MonitorTick : public ::testing::Test
{
protected:
    MonitorTick()
    {
        m_player.AddSound("/m/a.mp3", {.seconds = 100});
        m_player.AddSound("/m/b.mp3", {.seconds = 50});
        m_player.playlist.pl.Add({.Text = "1. a", .Length = "", .Path = "/m/a.mp3"});
        m_player.playlist.pl.Add({.Text = "2. b", .Length = "", .Path = "/m/b.mp3"});
        m_player.playlist.pl.Mark(1);
        m_player.playlist.Show();
        m_player.tracks.PlayTrack("/m/a.mp3");
    }

    void Overlap(const char* delay)
    {
        m_player.settings.WriteSetting("DJ", "CrossFade", "True");
        m_player.settings.WriteSetting("DJ", "CrossFadeDelay", delay);
    }

    void Position(double seconds)
    {
        m_player.bass.channels.at(m_player.state.CurrentChannel).position = seconds;
    }

    std::string PathOf(DWORD channel) const { return m_player.bass.channels.at(channel).path; }

    /// Paths of the channels that play, in the order of their opening.
    std::vector<std::string> Sounding() const
    {
        std::vector<std::string> paths;
        for (const auto& [handle, channel] : m_player.bass.channels)
            if (channel.state == BASS_ACTIVE_PLAYING)
                paths.push_back(channel.path);
        return paths;
    }

    std::string TimeAfter(double seconds)
    {
        m_player.bass.Advance(seconds);
        m_player.monitor.MonitorTick();
        return m_player.wmain.lblTime.Caption.Get();
    }

    double TickerOffset() const
    {
        return m_player.wmain.imgPositionTicker.Left - m_player.wmain.imgPositionBar.Left;
    }

    test::FakePlayer m_player;
};

TEST_F(MonitorTick, ShowsTheTimeThatPassedOrTheRest)
{
    EXPECT_EQ(TimeAfter(1.4), "00:01");
    EXPECT_EQ(TimeAfter(64), "01:05");
    m_player.state.TimeElapsedMode = false;
    EXPECT_EQ(TimeAfter(0), "-00:35");
    m_player.tracks.LoadNextChannel("/m/b.mp3");
    m_player.table.BASS_ChannelPlay(m_player.state.NextChannel, 1);
    EXPECT_EQ(TimeAfter(10), "-00:25/-00:40");
}

TEST_F(MonitorTick, MovesTheTickerByWholeSecondsAndNeverPastTheBar)
{
    TimeAfter(50.2);
    EXPECT_NEAR(TickerOffset(), 3255 * 0.5, 1e-3);
    m_player.bass.channels.at(m_player.state.CurrentChannel).position = 0.3;
    TimeAfter(0);
    EXPECT_EQ(TickerOffset(), 0);
    TimeAfter(99.5);
    EXPECT_LT(TickerOffset(), 3255) << "the last place is kept";
}

TEST_F(MonitorTick, AtTheListsEndTheIdleTimeStandsAndTheTitleStays)
{
    m_player.settings.WriteSetting("DJ", "Method", "3");
    TimeAfter(101);
    EXPECT_EQ(m_player.state.CurrentFile, "/m/b.mp3");
    EXPECT_EQ(TimeAfter(51), "00:00");
    EXPECT_EQ(TickerOffset(), 0);
    EXPECT_FALSE(m_player.wmain.tmrBASS.Enabled);
    EXPECT_EQ(m_player.wmain.lblSongName.Caption.Get(), "Velmo Player - b   ***   ");
}

TEST_F(MonitorTick, AHiddenPlaylistEndsAnAutomaticRunButNotAnOverlap)
{
    m_player.settings.WriteSetting("DJ", "Method", "4");
    m_player.playlist.Hide();
    Overlap("-5");
    TimeAfter(95);
    EXPECT_EQ(m_player.state.CurrentFile, "/m/b.mp3");
    TimeAfter(6);
    EXPECT_EQ(PathOf(m_player.state.CurrentChannel), "/m/b.mp3");
    Overlap("-60");
    TimeAfter(50);
    EXPECT_EQ(m_player.wmain.lblTime.Caption.Get(), "00:00");
    EXPECT_FALSE(m_player.wmain.tmrBASS.Enabled);
    EXPECT_TRUE(m_player.state.AdvanceRequested);
}

/// Second by second: what `lblTime` shows and which files sound, for a delay of -5.
TEST_F(MonitorTick, InterMixStartsTheNextTrackBesideThisOneAndSwapsAtItsEnd)
{
    m_player.settings.WriteSetting("DJ", "Method", "4");
    Overlap("-5");
    EXPECT_EQ(TimeAfter(94), "01:34");
    EXPECT_EQ(TimeAfter(1), "01:35/00:00") << "both at once";
    EXPECT_EQ(m_player.playlist.pl.SelectedEntry(), 2U);
    EXPECT_EQ(m_player.state.CurrentFile, "/m/b.mp3");
    for (const char* both :
         {"01:36/00:01", "01:37/00:02", "01:38/00:03", "01:39/00:04", "01:40/00:05"})
        EXPECT_EQ(TimeAfter(1), both);
    EXPECT_EQ(Sounding(), (std::vector<std::string>{"/m/a.mp3", "/m/b.mp3"}));
    EXPECT_EQ(TimeAfter(1), "59:-01/00:06")
        << "for one tick the dead channel is still the current one";
    EXPECT_EQ(TimeAfter(1), "00:07");
    EXPECT_EQ(m_player.state.NextChannel, 0U);
    EXPECT_FALSE(m_player.state.AdvanceRequested);
}

TEST_F(MonitorTick, APositiveDelayCutsEveryTrackButTheFirst)
{
    m_player.AddSound("/m/c.mp3", {.seconds = 50});
    m_player.playlist.pl.Add({.Text = "3. c", .Length = "", .Path = "/m/c.mp3"});
    m_player.settings.WriteSetting("DJ", "Method", "4");
    Overlap("5");
    TimeAfter(95);
    EXPECT_EQ(m_player.bass.channels.size(), 2U) << "opened, not started";
    EXPECT_EQ(Sounding(), std::vector<std::string>{"/m/a.mp3"});
    TimeAfter(5);
    EXPECT_EQ(Sounding(), std::vector<std::string>{"/m/a.mp3"}) << "whole";
    TimeAfter(1);
    EXPECT_EQ(Sounding(), std::vector<std::string>{"/m/b.mp3"});
    EXPECT_EQ(m_player.state.CurrentChannel, m_player.state.NextChannel);
    EXPECT_EQ(TimeAfter(44), "00:44") << "one time only, though both are active";
    TimeAfter(1);
    EXPECT_EQ(Sounding(), std::vector<std::string>{})
        << "cut five seconds early, a tick of silence";
    EXPECT_TRUE(m_player.wmain.tmrBASS.Enabled);
    TimeAfter(1);
    EXPECT_EQ(Sounding(), std::vector<std::string>{"/m/c.mp3"});
    EXPECT_TRUE(m_player.state.AdvanceRequested) << "it stays set";
}

TEST_F(MonitorTick, TheSameSecondSeenTwiceTriggersOnceAndASeekBackAgain)
{
    m_player.settings.WriteSetting("DJ", "Method", "4");
    Overlap("-5");
    TimeAfter(94.05);
    const DWORD started = m_player.state.NextChannel;
    EXPECT_NE(started, 0U);
    TimeAfter(0.94);
    TimeAfter(0.001);
    EXPECT_EQ(m_player.state.NextChannel, started);
    Position(80);
    TimeAfter(0);
    m_player.playlist.pl.Mark(1);
    Position(94.5);
    TimeAfter(0);
    EXPECT_NE(m_player.state.NextChannel, started);
}

TEST_F(MonitorTick, APreparationThatFailsLeavesTheTickGoing)
{
    // Down the list a crossfade goes up, and above row 1 there is nothing.
    m_player.settings.WriteSetting("DJ", "Method", "3");
    Overlap("-5");
    EXPECT_EQ(TimeAfter(95), "01:35");
    EXPECT_FALSE(m_player.playlist.pl.IsMarked(1)) << "everything is deselected";
    EXPECT_EQ(m_player.playlist.pl.SelectedEntry(), 1U);
    EXPECT_NEAR(TickerOffset(), 3255 * 0.95, 1e-3);
    EXPECT_TRUE(m_player.wmain.tmrBASS.Enabled);
}

TEST_F(MonitorTick, ThePreparedTrackBecomesTheCurrentOneOnlyIfItPlays)
{
    m_player.tracks.LoadNextChannel("/m/b.mp3");
    const DWORD prepared = m_player.state.NextChannel;
    m_player.table.BASS_ChannelPlay(prepared, 1);
    m_player.bass.channels.at(m_player.state.CurrentChannel).position = 90;
    TimeAfter(11);
    EXPECT_EQ(m_player.state.CurrentChannel, prepared);
    EXPECT_EQ(m_player.state.NextChannel, 0U);
    EXPECT_EQ(m_player.state.CurrentFile, "/m/a.mp3") << "nobody pressed Play";

    m_player.playlist.pl.Mark(2);
    m_player.tracks.LoadNextChannel("/m/a.mp3");
    TimeAfter(60);
    EXPECT_EQ(m_player.state.CurrentChannel, prepared) << "the dead handle stays";
    EXPECT_NE(m_player.state.NextChannel, 0U) << "what is prepared and not started is Play's";
}

TEST_F(MonitorTick, AnEmptyTrackLeavesTheTickerWhereItIs)
{
    m_player.AddSound("/m/empty.mp3", {.seconds = 0});
    TimeAfter(50);
    m_player.wmain.lblTime.Caption = "x";
    m_player.tracks.PlayTrack("/m/empty.mp3");
    m_player.wmain.imgPositionTicker.Left = 1000;
    m_player.state.TimeElapsedMode = false; // "-00:00" is not the idle text
    m_player.monitor.MonitorTick();
    EXPECT_EQ(m_player.wmain.imgPositionTicker.Left, 1000);
}

} // namespace
} // namespace velmo
