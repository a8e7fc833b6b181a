#include "ListFixture.h"

#include <gmock/gmock.h>

namespace velmo {
namespace {

using ::testing::ElementsAre;

class Orders : public ::testing::Test
{
protected:
    test::ListFixture m_player;
};

TEST_F(Orders, TitlesAreSortedWithoutTheirNumbersAndTheMarkFollowsTheText)
{
    m_player.Fill({"1. beta", "2. Alpha", "99. Problems", "4. alpha", "5. beta"});
    m_player.playlist.pl.Mark(3);
    m_player.playlist.pl.Mark(1);
    int finderLoads = 0;
    m_player.ordering.RefreshFinder = [&] { ++finderLoads; };
    m_player.ordering.SortListAscending();
    EXPECT_THAT(m_player.Texts(),
                ElementsAre("1. Alpha", "2. alpha", "3. beta*", "4. beta*", "5. Problems"));
    EXPECT_EQ(m_player.playlist.pl.Row(1).Path, "/m/2. Alpha");
    EXPECT_EQ(m_player.playlist.pl.SelectedEntry(), 4U) << "the last that was marked";
    m_player.Set("Display", "ShowNumbersInPL", "False");
    m_player.ordering.SortListDescending();
    EXPECT_THAT(m_player.Texts(), ElementsAre("Problems", "beta*", "beta*", "Alpha", "alpha"));
    EXPECT_THAT(m_player.Saved(), ::testing::StartsWith("#ZVL20#Internal playlist\r\nProblems"));
    EXPECT_EQ(finderLoads, 2);
}

TEST_F(Orders, AnEmptyListIsSavedAndTheViewFollowsTheSelection)
{
    m_player.ordering.SortListAscending();
    m_player.ordering.ShuffleList();
    EXPECT_EQ(m_player.Saved(), "#ZVL20#Internal playlist\r\n");
    m_player.Fill(std::vector<std::string>(60, "b"));
    m_player.playlist.pl.Add({"z", "", "/m/z"});
    m_player.playlist.pl.Mark(61);
    m_player.ordering.SortListAscending();
    EXPECT_EQ(m_player.playlist.pl.FirstVisibleEntry(), 30U);
    EXPECT_TRUE(m_player.playlist.tmrInfo.Enabled) << "the unread row came into view";
    EXPECT_EQ(m_player.list.TitleReadCursor, 29);
}

TEST_F(Orders, AShuffleSwapsEachRowWithTheOneThatIsDrawn)
{
    m_player.Fill({"1. a", "2. b", "3. c", "4. d"});
    m_player.playlist.pl.Mark(2);
    // Rows 2 (half to even), none (below a half), 4, 4 (3.5 goes to the even neighbour).
    m_player.random.numbers = {0.625F, 0.1F, 1.0F - 1e-6F, 0.875F};
    m_player.clock.seconds = 12.5F;
    m_player.ordering.ShuffleList();
    EXPECT_THAT(m_player.Texts(), ElementsAre("1. b*", "2. a", "3. d", "4. c"));
    EXPECT_EQ(m_player.playlist.pl.Row(3).Length, "00:04");
    EXPECT_THAT(m_player.random.seeds, ElementsAre(12.5F));
}

} // namespace
} // namespace velmo
