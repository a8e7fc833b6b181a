#include "SoundFixture.h"

namespace velmo {
namespace {

using ::testing::ElementsAre;

/// The track a, 100 seconds long, plays; below it in the list stands b of 50 seconds.
class MonitorTick : public SoundTest
{
protected:
    MonitorTick()
    {
        AddRow("/m/a.mp3", 100);
        AddRow("/m/b.mp3", 50);
        m_rows.Mark(1);
        m_player.tracks.PlayTrack("/m/a.mp3");
    }

    void Position(double seconds)
    {
        m_player.bass.channels.at(m_state.CurrentChannel).position = seconds;
    }

    double TickerOffset() const
    {
        return m_wmain.imgPositionTicker.Left - m_wmain.imgPositionBar.Left;
    }
};

TEST_F(MonitorTick, ShowsTheTimeThatPassedOrTheRestAndMovesTheTickerByWholeSeconds)
{
    EXPECT_EQ(TimeAfter(1.4), "00:01");
    EXPECT_EQ(TimeAfter(64), "01:05");
    EXPECT_NEAR(TickerOffset(), 3255 * 0.65, 1e-3);
    m_state.TimeElapsedMode = false;
    EXPECT_EQ(TimeAfter(0), "-00:35");
    m_player.tracks.LoadNextChannel("/m/b.mp3");
    m_player.table.BASS_ChannelPlay(m_state.NextChannel, 1);
    EXPECT_EQ(TimeAfter(10), "-00:25/-00:40");
    m_state.TimeElapsedMode = true;
    TimeAfter(24.4);
    EXPECT_LT(TickerOffset(), 3255) << "at the end the last place is kept";
    Position(0.3);
    m_player.bass.channels.erase(m_state.NextChannel);
    EXPECT_EQ(TimeAfter(0), "00:00");
    EXPECT_EQ(TickerOffset(), 0);
}

TEST_F(MonitorTick, AHiddenPlaylistEndsAnAutomaticRunButNotAnOverlap)
{
    m_player.SetAll("DJ", "Method=4|CrossFade=True|CrossFadeDelay=-5");
    m_player.playlist.Hide();
    TimeAfter(95);
    TimeAfter(6);
    EXPECT_THAT(Sounding(), ElementsAre("/m/b.mp3"));
    m_player.Set("DJ", "CrossFadeDelay", "-60");
    EXPECT_EQ(TimeAfter(50), "00:00");
    EXPECT_EQ(TickerOffset(), 0);
    EXPECT_EQ(m_wmain.lblSongName.Caption.Get(), "Velmo Player - b   ***   ") << "it stays";
    EXPECT_FALSE(m_wmain.tmrBASS.Enabled);
    EXPECT_TRUE(m_state.AdvanceRequested);
}

/// Second by second: what `lblTime` shows and which files sound, for a delay of -5.
TEST_F(MonitorTick, InterMixStartsTheNextTrackBesideThisOneAndSwapsAtItsEnd)
{
    m_player.SetAll("DJ", "Method=4|CrossFade=True|CrossFadeDelay=-5");
    EXPECT_EQ(TimeAfter(94), "01:34");
    EXPECT_EQ(TimeAfter(1), "01:35/00:00") << "both at once";
    EXPECT_EQ(m_rows.SelectedEntry(), 2U);
    EXPECT_FALSE(m_rows.IsMarked(1));
    EXPECT_EQ(m_state.CurrentFile, "/m/b.mp3");
    for (const char* both :
         {"01:36/00:01", "01:37/00:02", "01:38/00:03", "01:39/00:04", "01:40/00:05"})
        EXPECT_EQ(TimeAfter(1), both);
    EXPECT_EQ(TimeAfter(1), "59:-01/00:06")
        << "for one tick the dead channel is still the current one";
    EXPECT_EQ(TimeAfter(1), "00:07");
    EXPECT_EQ(m_state.NextChannel, 0U);
    EXPECT_FALSE(m_state.AdvanceRequested);
}

TEST_F(MonitorTick, TheSameSecondSeenTwiceTriggersOnceAndASeekBackAgain)
{
    m_player.SetAll("DJ", "Method=4|CrossFade=True|CrossFadeDelay=-5");
    TimeAfter(94.05);
    const DWORD started = m_state.NextChannel;
    EXPECT_NE(started, 0U);
    TimeAfter(0.94);
    EXPECT_EQ(m_state.NextChannel, started);
    Position(80);
    TimeAfter(0);
    m_rows.Mark(1);
    Position(94.5);
    TimeAfter(0);
    EXPECT_NE(m_state.NextChannel, started);
}

TEST_F(MonitorTick, APreparationThatFailsLeavesTheTickGoing)
{
    // Down the list a crossfade goes up, and above row 1 there is nothing.
    m_player.SetAll("DJ", "Method=3|CrossFade=True|CrossFadeDelay=-5");
    EXPECT_EQ(TimeAfter(95), "01:35");
    EXPECT_FALSE(m_rows.IsMarked(1)) << "everything is deselected";
    EXPECT_NEAR(TickerOffset(), 3255 * 0.95, 1e-3);
    EXPECT_TRUE(m_wmain.tmrBASS.Enabled);
}

} // namespace
} // namespace velmo
