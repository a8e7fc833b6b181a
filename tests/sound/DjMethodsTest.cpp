#include "SoundFixture.h"

namespace velmo {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Numbers = std::deque<float>;

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

    /// The selected row, whether it plays, and whether the list still waits for an advance.
    std::string State() const
    {
        const std::size_t row = m_rows.SelectedEntry();
        const bool plays = Sounding() == std::vector<std::string>{m_rows.Row(row).Path};
        return "row " + std::to_string(row) + (plays ? " plays" : "")
               + (m_state.AdvanceRequested ? ", waits" : "")
               + (m_wmain.tmrBASS.Enabled ? "" : ", monitor off");
    }

    /// What there is behind the end of row 2 if `row` is selected by then.
    std::string After2(const char* method, std::size_t row, const Numbers& numbers = {})
    {
        m_player.Set("DJ", "Method", method);
        m_state.AdvanceRequested = false;
        PlayRow(2);
        m_player.list.DeselectAllEntries();
        m_rows.Mark(row);
        m_player.random.numbers = numbers;
        TimeAfter(11);
        EXPECT_THAT(m_player.random.numbers, IsEmpty());
        return State();
    }

    /// What a crossfade opens, with `PlayIndex` in front, which was 9.
    std::string Prepared(const char* method, std::size_t row, const Numbers& numbers = {})
    {
        m_player.Set("DJ", "Method", method);
        m_state.PlayIndex = 9;
        m_state.AdvanceRequested = true;
        m_state.NextChannel = 0;
        m_rows.Mark(row);
        m_player.random.numbers = numbers;
        std::string outcome;
        try {
            m_player.dj.PrepareNextTrack();
        } catch (const std::out_of_range&) {
            outcome = " fails";
        }
        const auto next = m_player.bass.channels.find(m_state.NextChannel);
        if (next != m_player.bass.channels.end())
            outcome += " " + next->second.path;
        return std::to_string(m_state.PlayIndex) + outcome
               + (m_state.AdvanceRequested ? "" : " ends the run");
    }
};

TEST_F(Dj, WhatFollowsATrackByTheMethod)
{
    EXPECT_EQ(After2("2", 3), "row 3 plays") << "repeat goes by the row";
    EXPECT_EQ(After2("3", 3), "row 3, monitor off") << "down from the last";
    EXPECT_EQ(After2("4", 1), "row 1, waits, monitor off") << "up from the first";
    EXPECT_EQ(After2("", 2, {0.6F, 0.3F}), "row 1 plays") << "random redraws what has played";
    EXPECT_EQ(After2("5", 2, {0.1F}), "row 2, waits, monitor off") << "random pick 0";
    EXPECT_EQ(After2("5", 2, {0.6F, 0.1F}), "row 2, waits, monitor off") << "redraw 0";
    EXPECT_EQ(After2("x", 1), "row 1 plays") << "unknown is selected";
    EXPECT_THAT(m_player.random.seeds, ::testing::Each(43200)) << "each run is seeded by the clock";
}

TEST_F(Dj, OneRowOfWhatPlayedEndsARandomRunAndManyEndItAfterManyDraws)
{
    m_rows.Remove(3);
    m_rows.Remove(1);
    m_player.random.numbers = {0.9F};
    TimeAfter(11);
    EXPECT_EQ(State(), "row 1, monitor off");
    m_player.Set("DJ", "AssureNotTheSame", "False");
    PlayRow(1);
    m_player.random.numbers = {0.9F};
    TimeAfter(11);
    EXPECT_EQ(State(), "row 1 plays");

    // Rows of one path only, and never the pick 0.
    m_player.Set("DJ", "AssureNotTheSame", "True");
    AddRow("/m/b.mp3", 10);
    m_player.random.numbers.assign(20000, 0.9F);
    TimeAfter(11);
    EXPECT_EQ(m_player.random.numbers.size(), 10000U);
    EXPECT_EQ(State(), "row 2, waits, monitor off");
    EXPECT_EQ(Prepared("5", 1, Numbers(20000, 0.9F)), "0 fails");
}

TEST_F(Dj, PreparationWalksTheOtherWay)
{
    EXPECT_EQ(Prepared("3", 2), "1 /m/a.mp3");
    EXPECT_EQ(Prepared("3", 1), "0 fails") << "the test is that of the other direction";
    EXPECT_EQ(Prepared("3", 3), "9 ends the run");
    EXPECT_EQ(Prepared("4", 2), "3 /m/c.mp3");
    EXPECT_EQ(Prepared("4", 3), "4 fails");
    EXPECT_EQ(Prepared("5", 2, {0.3F}), "1 /m/a.mp3");
    EXPECT_EQ(Prepared("6", 2, {0.6F, 0.9F}), "3 /m/c.mp3");
    EXPECT_EQ(Prepared("5", 2, {0.1F}), "0 fails");
    EXPECT_EQ(Prepared("7", 3), "3 /m/c.mp3");
    EXPECT_EQ(Prepared("1", 2), "9 fails") << "the index of old";
    m_rows.Clear();
    m_state.AdvanceRequested = true;
    m_player.Set("DJ", "Method", "7");
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
    const auto expect = [this](const char* method, const char* afterTwoTicks) {
        m_player.Set("DJ", "Method", method);
        m_player.random.numbers = {0.9F};
        m_state.AdvanceRequested = false;
        PlayRow(2);
        EXPECT_TRUE(m_wmain.tmrBASS.Enabled);
        TimeAfter(1);
        TimeAfter(1);
        EXPECT_EQ(State(), afterTwoTicks) << method;
        EXPECT_FALSE(m_player.errMGR.Visible);
    };
    expect("1", "row 2, monitor off");
    expect("2", "row 2"); // again and again
    expect("3", "row 3 plays");
    expect("4", "row 1 plays");
    expect("5", "row 3 plays");
    expect("7", "row 2");
    // Method 6 removes it like one that played.
    m_player.Set("DJ", "Method", "6");
    m_player.random.numbers = {0.6F, 0.9F};
    m_player.tracks.PlayTrack("/m/gone.mp3");
    TimeAfter(1);
    EXPECT_EQ(m_state.CurrentFile, "/m/bad.mp3");
    TimeAfter(1);
    EXPECT_THAT(Sounding(), ElementsAre("/m/c.mp3"));
    EXPECT_EQ(m_rows.Count(), 1U);
}

} // namespace
} // namespace velmo
