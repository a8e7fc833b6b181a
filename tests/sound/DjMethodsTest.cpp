#include "support/FakePlayer.h"

#include <gmock/gmock.h>

namespace velmo {
namespace {

using ::testing::IsEmpty;

/// A list of the tracks a, b and c, each 10 seconds long, whose second row plays.
class Dj : public ::testing::Test
{
protected:
    Dj()
    {
        m_player.playlist.Show();
        for (const char* name : {"a", "b", "c"})
            AddRow(std::string("/m/") + name + ".mp3", 10);
        m_rows.Mark(2);
        m_player.tracks.PlayTrack("/m/b.mp3");
    }

    void AddRow(const std::string& path, double seconds)
    {
        if (seconds > 0)
            m_player.AddSound(path, {.seconds = seconds});
        m_rows.Add({.Text = path, .Length = "00:10", .Path = path});
    }

    void Set(const char* key, const std::string& value)
    {
        m_player.settings.WriteSetting("DJ", key, value);
    }

    /// `seconds` later the monitor ticks.
    void Tick(double seconds = 1)
    {
        m_player.bass.Advance(seconds);
        if (m_player.wmain.tmrBASS.Enabled)
            m_player.monitor.MonitorTick();
    }

    std::size_t Row() const { return m_rows.SelectedEntry(); }
    bool Plays(const std::string& path) const
    {
        const auto channel = m_player.bass.channels.find(m_player.state.CurrentChannel);
        return channel != m_player.bass.channels.end() && channel->second.path == path
               && channel->second.state == BASS_ACTIVE_PLAYING;
    }

    test::FakePlayer m_player;
    controls::ListRows& m_rows = m_player.playlist.pl;
    TransportState& m_state = m_player.state;
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
        Set("Method", c.method);
        m_state.AdvanceRequested = false;
        m_rows.Mark(2);
        m_player.tracks.PlayTrack("/m/b.mp3");
        m_player.list.DeselectAllEntries();
        m_rows.Mark(c.row);
        m_player.random.numbers = c.numbers;
        Tick(11);
        EXPECT_EQ(Plays(m_rows.Row(Row()).Path), c.plays);
        EXPECT_EQ(Row(), c.rowAfter);
        EXPECT_EQ(m_state.AdvanceRequested, c.requestedAfter);
        EXPECT_EQ(m_player.wmain.tmrBASS.Enabled, c.plays);
        EXPECT_THAT(m_player.random.numbers, IsEmpty());
    }
    EXPECT_THAT(m_player.random.seeds, ::testing::Each(43200)) << "each run is seeded by the clock";
}

TEST_F(Dj, ErasingTakesThePlayedRowAwayAndRenumbersNothing)
{
    Set("Method", "6");
    m_player.random.numbers = {0.3F};
    Tick(11);
    EXPECT_TRUE(Plays("/m/a.mp3"));
    ASSERT_EQ(m_rows.Count(), 2U);
    EXPECT_EQ(m_rows.Row(1).Path, "/m/b.mp3");
    EXPECT_EQ(Row(), 1U) << "the row that took its place";
}

TEST_F(Dj, OneRowOfWhatPlayedEndsARandomRunAndManyEndItAfterManyDraws)
{
    m_rows.Remove(3);
    m_rows.Remove(1);
    m_player.random.numbers = {0.9F};
    Tick(11);
    EXPECT_FALSE(m_state.AdvanceRequested);
    EXPECT_EQ(m_player.state.CurrentFile, "/m/b.mp3");
    EXPECT_FALSE(m_player.wmain.tmrBASS.Enabled);
    Set("AssureNotTheSame", "False");
    m_player.tracks.PlayTrack("/m/b.mp3");
    m_player.random.numbers = {0.9F};
    Tick(11);
    EXPECT_TRUE(Plays("/m/b.mp3"));

    // Rows of one path only, and never the pick 0.
    Set("AssureNotTheSame", "True");
    AddRow("/m/b.mp3", 10);
    for (const bool overlap : {false, true}) {
        Set("CrossFade", overlap ? "True" : "False");
        m_player.random.numbers.assign(20000, 0.9F);
        m_state.AdvanceRequested = false;
        m_player.tracks.PlayTrack("/m/b.mp3");
        m_state.PlayIndex = 1;
        Tick(overlap ? 10 : 11);
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
        const char* prepared; ///< null: nothing was opened
        bool fails;
    };
    const Case cases[] = {
        {"3", 2, {},           1, "/m/a.mp3", false},
        {"3", 1, {},           0, nullptr,    true }, // the test is that of the other direction
        {"3", 3, {},           9, nullptr,    false},
        {"4", 2, {},           3, "/m/c.mp3", false},
        {"4", 3, {},           4, nullptr,    true },
        {"5", 2, {0.3F},       1, "/m/a.mp3", false},
        {"6", 2, {0.6F, 0.9F}, 3, "/m/c.mp3", false},
        {"5", 2, {0.1F},       0, nullptr,    true },
        {"7", 3, {},           3, "/m/c.mp3", false},
        {"1", 2, {},           9, nullptr,    true }, // the index of old
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.method) + " at " + std::to_string(c.row));
        Set("Method", c.method);
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
        EXPECT_EQ(next == m_player.bass.channels.end() ? "" : next->second.path,
                  c.prepared == nullptr ? "" : c.prepared);
        EXPECT_EQ(m_state.AdvanceRequested, c.prepared != nullptr || c.fails);
    }
    m_rows.Clear();
    Set("Method", "7");
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
        std::size_t count;
    };
    const Case cases[] = {
        {"1", {},     2, false, false, 3}, // off at the first tick
        {"2", {},     2, false, true,  3}, // again and again
        {"3", {},     3, true,  true,  3},
        {"4", {},     1, true,  true,  3},
        {"5", {0.9F}, 3, true,  true,  3},
        {"7", {},     2, false, true,  3}, // again and again
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.method);
        Set("Method", c.method);
        m_player.random.numbers = c.numbers;
        m_state.AdvanceRequested = false;
        m_rows.Mark(2);
        m_player.tracks.PlayTrack("/m/bad.mp3");
        EXPECT_TRUE(m_player.wmain.tmrBASS.Enabled);
        Tick();
        Tick();
        EXPECT_EQ(Row(), c.row);
        EXPECT_EQ(Plays(m_rows.Row(Row()).Path), c.plays);
        EXPECT_EQ(m_player.wmain.tmrBASS.Enabled, c.monitorRuns);
        EXPECT_EQ(m_rows.Count(), c.count);
        EXPECT_FALSE(m_player.errMGR.Visible);
    }
    // Method 6 removes it like one that played.
    Set("Method", "6");
    m_player.random.numbers = {0.6F, 0.9F};
    m_player.tracks.PlayTrack("/m/gone.mp3");
    Tick();
    EXPECT_EQ(m_state.CurrentFile, "/m/bad.mp3");
    Tick();
    EXPECT_TRUE(Plays("/m/c.mp3"));
    ASSERT_EQ(m_rows.Count(), 1U);
    EXPECT_EQ(m_rows.Row(1).Path, "/m/a.mp3");
}

} // namespace
} // namespace velmo
