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
        m_player.tracks.PlayTrack("/m/a.mp3");
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

TEST_F(MonitorTick, AtTheEndTheNextRowFollowsAndTheLastRowIsTheEnd)
{
    TimeAfter(101);
    EXPECT_EQ(m_player.state.CurrentFile, "/m/b.mp3");
    EXPECT_EQ(m_player.playlist.pl.SelectedEntry(), 2U);
    EXPECT_TRUE(m_player.wmain.tmrBASS.Enabled);
    EXPECT_EQ(TimeAfter(51), "00:00");
    EXPECT_EQ(TickerOffset(), 0);
    EXPECT_FALSE(m_player.wmain.tmrBASS.Enabled);
    EXPECT_EQ(m_player.wmain.lblSongName.Caption.Get(), "Velmo Player - b   ***   ")
        << "the title stays";
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
