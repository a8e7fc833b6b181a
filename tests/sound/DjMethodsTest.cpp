#include "SoundFixture.h"

namespace velmo {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// A list of the tracks a, b and c, each 10 seconds long, whose second row plays.
class Dj : public SoundTest
{
protected:
    Dj()
    {
        for (const char* path : {"/m/a.mp3", "/m/b.mp3", "/m/c.mp3"})
            AddRow(path, 10);
        PlayRow(2);
    }

    void PlayRow(std::size_t row)
    {
        m_rows.Mark(row);
        m_player.tracks.PlayTrack(m_rows.Row(row).Path);
    }

    std::size_t Row() const { return m_rows.SelectedEntry(); }
    bool RowPlays() const { return Sounding() == std::vector<std::string>{m_rows.Row(Row()).Path}; }
};

TEST_F(Dj, WhatFollowsATrackByTheMethod)
{
    struct Case
    {
        const char* what;
        const char* method;
        std::size_t row;
        std::deque<float> numbers;
        bool plays;
        std::size_t rowAfter;
        bool requestedAfter;
    };
    const Case cases[] = {
        {"manual",                           "1", 2, {},           false, 2, false},
        {"repeat",                           "2", 2, {},           true,  2, false},
        {"repeat goes by the row",           "2", 3, {},           true,  3, false},
        {"down",                             "3", 2, {},           true,  3, false},
        {"down from the last",               "3", 3, {},           false, 3, false},
        {"up",                               "4", 2, {},           true,  1, false},
        {"up from the first",                "4", 1, {},           false, 1, true },
        {"random",                           "5", 2, {0.9F},       true,  3, false},
        {"random hits what played, redraws", "",  2, {0.6F, 0.3F}, true,  1, false},
        {"random pick 0",                    "5", 2, {0.1F},       false, 2, true },
        {"random redraw 0",                  "5", 2, {0.6F, 0.1F}, false, 2, true },
        {"selected",                         "7", 3, {},           true,  3, false},
        {"unknown is selected",              "x", 1, {},           true,  1, false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        Set("DJ", "Method", c.method);
        m_state.AdvanceRequested = false;
        PlayRow(2);
        m_player.list.DeselectAllEntries();
        m_rows.Mark(c.row);
        m_player.random.numbers = c.numbers;
        TimeAfter(11);
        EXPECT_EQ(RowPlays(), c.plays);
        EXPECT_EQ(Row(), c.rowAfter);
        EXPECT_EQ(m_state.AdvanceRequested, c.requestedAfter);
        EXPECT_EQ(m_wmain.tmrBASS.Enabled, c.plays);
        EXPECT_THAT(m_player.random.numbers, IsEmpty());
    }
    EXPECT_THAT(m_player.random.seeds, ::testing::Each(43200)) << "each run is seeded by the clock";
}

TEST_F(Dj, OneRowOfWhatPlayedEndsARandomRunAndManyEndItAfterManyDraws)
{
    m_rows.Remove(3);
    m_rows.Remove(1);
    m_player.random.numbers = {0.9F};
    TimeAfter(11);
    EXPECT_THAT(Sounding(), IsEmpty());
    EXPECT_FALSE(m_state.AdvanceRequested);
    Set("DJ", "AssureNotTheSame", "False");
    PlayRow(1);
    m_player.random.numbers = {0.9F};
    TimeAfter(11);
    EXPECT_TRUE(RowPlays());

    // Rows of one path only, and never the pick 0.
    Set("DJ", "AssureNotTheSame", "True");
    AddRow("/m/b.mp3", 10);
    for (const bool overlap : {false, true}) {
        Set("DJ", "CrossFade", overlap ? "True" : "False");
        m_player.random.numbers.assign(20000, 0.9F);
        m_state.AdvanceRequested = false;
        m_player.tracks.PlayTrack("/m/b.mp3");
        m_state.PlayIndex = 1;
        TimeAfter(overlap ? 10 : 11);
        EXPECT_EQ(m_player.random.numbers.size(), 10000U);
        EXPECT_EQ(m_state.AdvanceRequested, !overlap);
        EXPECT_EQ(m_state.PlayIndex, overlap ? 0 : 1);
    }
}

TEST_F(Dj, PreparationWalksTheOtherWay)
{
    struct Case
    {
        const char* method;
        std::size_t row;
        std::deque<float> numbers;
        int index;            ///< `PlayIndex` after it; 9 before
        const char* prepared; ///< empty: nothing was opened
        bool fails;
    };
    const Case cases[] = {
        {"3", 2, {},           1, "/m/a.mp3", false},
        {"3", 1, {},           0, "",         true }, // the test is that of the other direction
        {"3", 3, {},           9, "",         false},
        {"4", 2, {},           3, "/m/c.mp3", false},
        {"4", 3, {},           4, "",         true },
        {"5", 2, {0.3F},       1, "/m/a.mp3", false},
        {"6", 2, {0.6F, 0.9F}, 3, "/m/c.mp3", false},
        {"5", 2, {0.1F},       0, "",         true },
        {"7", 3, {},           3, "/m/c.mp3", false},
        {"1", 2, {},           9, "",         true }, // the index of old
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.method) + " at " + std::to_string(c.row));
        Set("DJ", "Method", c.method);
        m_state.PlayIndex = 9;
        m_state.AdvanceRequested = true;
        m_state.NextChannel = 0;
        m_rows.Mark(c.row);
        m_player.random.numbers = c.numbers;
        if (c.fails)
            EXPECT_THROW(m_player.dj.PrepareNextTrack(), std::out_of_range);
        else
            m_player.dj.PrepareNextTrack();
        EXPECT_EQ(m_state.PlayIndex, c.index);
        const auto next = m_player.bass.channels.find(m_state.NextChannel);
        EXPECT_EQ(next == m_player.bass.channels.end() ? "" : next->second.path, c.prepared);
        EXPECT_EQ(m_state.AdvanceRequested, *c.prepared != '\0' || c.fails);
    }
    m_rows.Clear();
    Set("DJ", "Method", "7");
    m_player.dj.PrepareNextTrack();
    EXPECT_FALSE(m_state.AdvanceRequested);
}

/// What follows a bad file in row 2 once something has played, second by second.
TEST_F(Dj, ABadFileCostsASecondAndTheMethodSaysWhatFollows)
{
    m_rows.Clear();
    AddRow("/m/a.mp3", 100);
    AddRow("/m/bad.mp3", 0);
    AddRow("/m/c.mp3", 100);
    struct Case
    {
        const char* method;
        std::deque<float> numbers;
        std::size_t row; ///< after two ticks
        bool plays;      ///< the row's file
        bool monitorRuns;
    };
    const Case cases[] = {
        {"1", {},     2, false, false}, // off at the first tick
        {"2", {},     2, false, true }, // again and again
        {"3", {},     3, true,  true },
        {"4", {},     1, true,  true },
        {"5", {0.9F}, 3, true,  true },
        {"7", {},     2, false, true }, // again and again
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.method);
        Set("DJ", "Method", c.method);
        m_player.random.numbers = c.numbers;
        m_state.AdvanceRequested = false;
        PlayRow(2);
        EXPECT_TRUE(m_wmain.tmrBASS.Enabled);
        TimeAfter(1);
        TimeAfter(1);
        EXPECT_EQ(Row(), c.row);
        EXPECT_EQ(RowPlays(), c.plays);
        EXPECT_EQ(m_wmain.tmrBASS.Enabled, c.monitorRuns);
        EXPECT_FALSE(m_player.errMGR.Visible);
    }
    // Method 6 removes it like one that played.
    Set("DJ", "Method", "6");
    m_player.random.numbers = {0.6F, 0.9F};
    m_player.tracks.PlayTrack("/m/gone.mp3");
    TimeAfter(1);
    EXPECT_EQ(m_state.CurrentFile, "/m/bad.mp3");
    TimeAfter(1);
    EXPECT_THAT(Sounding(), ElementsAre("/m/c.mp3"));
    ASSERT_EQ(m_rows.Count(), 1U);
    EXPECT_EQ(m_rows.Row(1).Path, "/m/a.mp3");
}

} // namespace
} // namespace velmo
