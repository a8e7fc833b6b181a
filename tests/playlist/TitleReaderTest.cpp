#include "ListFixture.h"

#include <gmock/gmock.h>

namespace velmo {
namespace {

class Reader : public ::testing::Test
{
protected:
    void AddUnread(std::size_t count)
    {
        for (std::size_t i = 1; i <= count; ++i) {
            const std::string path = "/m/" + std::to_string(i) + ".mp3";
            m_player.AddSound(path, {.seconds = 61});
            m_rows.Add({"x", "", path});
        }
    }

    /// Ticks until the pass ends; the number of ticks, 1000 if it does not.
    int RunPass()
    {
        int ticks = 0;
        for (; m_player.playlist.tmrInfo.Enabled && ticks < 1000; ++ticks)
            m_reader.tmrInfo_Timer();
        return ticks;
    }

    test::ListFixture m_player;
    controls::ListRows& m_rows = m_player.playlist.pl;
    TitleReader m_reader = m_player.MakeReader();
};

TEST_F(Reader, APassReadsTheRowsInViewAndThenSortsAndSaves)
{
    AddUnread(100);
    m_rows.SetRow(2, {"2. kept", "00:07", "/m/2.mp3"});
    m_rows.SetRow(3, {"3. gone", "00:00", "/gone.mp3"});
    m_player.list.StartTitleReader(0);
    EXPECT_EQ(RunPass(), 33);
    EXPECT_EQ(m_rows.Row(1), (controls::PlaylistEntry{"1. 1", "01:01", "/m/1.mp3"}));
    EXPECT_EQ(m_rows.Row(2).Text, "2. kept");
    EXPECT_EQ(m_rows.Row(3), (controls::PlaylistEntry{"3. ", "59:-01", "/gone.mp3"}));
    EXPECT_EQ(m_rows.Row(32).Length, "01:01");
    EXPECT_EQ(m_rows.Row(33).Length, "") << "behind the 32 rows of the view";
    EXPECT_THAT(m_player.Saved(), ::testing::HasSubstr("\r\n32\r\n61#/m/32.mp3\r\nx\r\n0#"));

    m_rows.EnsureVisible(100);
    m_player.Set("Display", "ShowNumbersInPL", "False");
    m_player.SetAll("Options", "ShowLengthInPL=False|SortListOnLoad=True");
    m_player.list.WakeTitleReader();
    EXPECT_EQ(m_player.list.TitleReadCursor, 68);
    m_player.tagLibrary.formatTags["/m/100.mp3 %TITL"] = "! first";
    m_reader.tmrInfo_Timer();
    EXPECT_EQ(m_rows.Row(69), (controls::PlaylistEntry{"69", "", "/m/69.mp3"}));
    m_player.list.StartTitleReader(99); // another door's wake-up moves the cursor
    m_reader.tmrInfo_Timer();
    EXPECT_EQ(m_rows.Row(2).Text, "! first") << "row 1 has no title at all";
}

TEST_F(Reader, APassEndsAtTheEndOfTheListWhateverHappensToIt)
{
    m_player.playlist.tmrInfo.Enabled = true;
    EXPECT_EQ(RunPass(), 1) << "an empty list";
    AddUnread(90);
    m_rows.EnsureVisible(90);
    m_player.list.StartTitleReader(79);
    m_reader.tmrInfo_Timer();
    EXPECT_EQ(m_rows.Row(80).Length, "01:01");
    m_rows.EnsureVisible(1); // the cursor is below the view now
    EXPECT_EQ(RunPass(), 10);
    EXPECT_EQ(m_rows.Row(81).Length, "") << "nothing is read in those ticks";
    m_rows.EnsureVisible(90);
    m_player.list.StartTitleReader(79);
    m_rows.Clear();
    AddUnread(2);
    EXPECT_EQ(RunPass(), 1);
    EXPECT_TRUE(m_player.bass.channels.empty());
}

TEST_F(Reader, TheFileOfTheCommandLineIsPlayedUntilItOpens)
{
    AddUnread(3);
    m_player.list.StartTitleReader(0);
    m_reader.tmrInfo_Timer();
    TitleReader reader = m_player.MakeReader("/m/1.mp3");
    reader.tmrInfo_Timer();
    reader.tmrInfo_Timer();
    EXPECT_THAT(m_player.status.told, ::testing::ElementsAre("playing /m/1.mp3"));
    m_rows.SetRow(1, {"gone", "00:01", "/gone.mp3"});
    m_player.tracks.PlayTrack("/gone.mp3");
    reader.tmrInfo_Timer();
    reader.tmrInfo_Timer();
    EXPECT_EQ(m_player.status.told.size(), 4U)
        << "a file that does not open is tried by every tick";
}

} // namespace
} // namespace velmo
