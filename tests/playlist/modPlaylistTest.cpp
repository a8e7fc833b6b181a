#include "ListFixture.h"

#include <gmock/gmock.h>

namespace velmo {
namespace {

using ::testing::ElementsAre;

class Model : public ::testing::Test
{
protected:
    test::ListFixture m_player;
    controls::ListRows& m_rows = m_player.playlist.pl;
    controls::ScrollBar& m_bar = m_player.playlist.scBar;
};

TEST_F(Model, TheInternalListComesBackAsItWasSaved)
{
    m_rows.Add({"1. A", "01:07:00", "/m/a#b.mp3"});
    m_rows.Add({"2001. A Space Odyssey", "", "/m/\xFF.mp3"});
    m_player.list.SaveInternalList();
    EXPECT_EQ(m_player.Saved(),
              "#ZVL20#Internal playlist\r\nA\r\n4020#/m/a#b.mp3\r\n"
              "A Space Odyssey\r\n0#/m/\xED\xB3\xBF.mp3\r\n");
    m_rows.Clear();
    m_player.Set("Display", "ShowNumbersInPL", "False");
    m_player.list.LoadInternalList();
    EXPECT_EQ(m_rows.Row(1), (controls::PlaylistEntry{"A", "01:07:00", "/m/a"}));
    EXPECT_EQ(m_rows.Row(2), (controls::PlaylistEntry{"A Space Odyssey", "00:00", "/m/\xFF.mp3"}));
    EXPECT_EQ(m_bar.Max, 2 - 31);
    m_player.Set("Options", "ShowNumbersInPL", "True"); // this section comes first here
    m_player.Set("Options", "ShowLengthInPL", "False");
    m_player.list.LoadInternalList();
    EXPECT_EQ(m_rows.Row(3), (controls::PlaylistEntry{"3. A", "", "/m/a"}));
    m_player.files.files["/app/list.zvl"] = "#ZVL20\r\nonly a title\r\n";
    m_player.list.LoadInternalList();
    EXPECT_EQ(m_rows.Row(5), (controls::PlaylistEntry{"5. only a title", "", ""}));
}

TEST_F(Model, AListThatWasNotReadIsKeptOnceBeforeItIsReplaced)
{
    const auto expect = [](const std::string& old, bool load, const std::string& kept) {
        test::ListFixture player;
        player.files.files["/app/list.zvl"] = old;
        if (load)
            player.list.LoadInternalList();
        player.files.writesFail = true;
        EXPECT_EQ(player.list.SaveInternalList(), ports::WriteResult::Failed);
        EXPECT_EQ(player.Saved(), old);
        player.files.writesFail = false;
        player.list.SaveInternalList();
        player.list.SaveInternalList();
        EXPECT_EQ(player.files.files["/app/list.zvl~"], kept);
        EXPECT_TRUE(player.Saved().starts_with("#ZVL20#Internal playlist\r\n"));
    };
    const std::string own = "#ZVL20#\r\nA\r\n1#/a\r\n";
    expect(own, false, own);
    expect(own, true, "");
    expect("foreign", true, "foreign");
}

TEST_F(Model, DeletingRenumbersAndSaves)
{
    m_player.Fill({"1. a", "2. b", "3. c", "4. d"});
    m_rows.Mark(2);
    m_rows.Mark(3);
    m_player.list.DeleteSelectedEntries();
    EXPECT_THAT(m_player.Texts(), ElementsAre("1. a", "2. d"));
    EXPECT_EQ(m_rows.SelectedEntry(), 2U);
    EXPECT_THAT(m_player.Saved(), ::testing::EndsWith("a\r\n1#/m/1. a\r\nd\r\n4#/m/4. d\r\n"));
    m_player.Set("Display", "ShowNumbersInPL", "no");
    m_player.list.DeleteSelectedEntries();
    EXPECT_THAT(m_player.Texts(), ElementsAre("a", "d")) << "numbers go whatever the option says";
}

TEST_F(Model, TheScrollBarFollowsTheFocus)
{
    const auto expect = [&](std::size_t count, std::int32_t max, std::int32_t position) {
        m_rows.Clear();
        m_player.Fill(std::vector<std::string>(count, "x"));
        if (count > 0)
            m_rows.Mark(5);
        m_player.list.UpdateListScrollBar();
        EXPECT_EQ(std::pair(m_bar.Max.Get(), m_bar.Position()), std::pair(max, position)) << count;
    };
    expect(100, 69, 5);
    expect(35, 4, 4);
    expect(0, -31, 4); // an empty list leaves the position
}

TEST_F(Model, TheReaderWakesForUnreadRowsInViewOnly)
{
    m_player.Fill(std::vector<std::string>(100, "x"));
    m_player.list.WakeTitleReader();
    EXPECT_FALSE(m_player.playlist.tmrInfo.Enabled);
    m_rows.SetRow(43, {"x", " ", "/m/x"});
    EXPECT_FALSE(m_player.list.VisibleNeedsReading(10));
    EXPECT_TRUE(m_player.list.VisibleNeedsReading(11));
    EXPECT_FALSE(m_player.list.VisibleNeedsReading(44));
    m_rows.EnsureVisible(51); // row 20 at the top
    m_player.Set("Options", "ReadTitlesOn", "play");
    m_player.list.WakeTitleReader();
    EXPECT_FALSE(m_player.playlist.tmrInfo.Enabled);
    m_player.Set("Options", "ReadTitlesOn", "DISPLAY");
    m_player.list.WakeTitleReader();
    EXPECT_TRUE(m_player.playlist.tmrInfo.Enabled);
    EXPECT_EQ(m_player.list.TitleReadCursor, 19);
}

} // namespace
} // namespace velmo
