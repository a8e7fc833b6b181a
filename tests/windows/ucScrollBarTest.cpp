#include "windows/ucScrollBar.h"

#include "controls/TimerBinding.h"
#include "forms/Playlist.h"
#include "support/FakeTimers.h"
#include "support/Mouse.h"

#include <gmock/gmock.h>

#include <utility>
#include <vector>

namespace velmo {
namespace {

using ::testing::ElementsAre;

controls::MouseEvent At(double y)
{
    return test::LeftAt(30, y);
}

/// The bar of the playlist: its ticker has a way of 6000 twips.
class SkinScrollBar : public ::testing::Test
{
protected:
    SkinScrollBar()
    {
        m_bar.Change = [this](bool goesDown, int position) { Note(goesDown, position); };
        SetEnds(1, 61);
    }

    void Note(bool goesDown, int position)
    {
        m_told += (goesDown ? "down " : "up ") + std::to_string(position) + " ";
    }
    void SetEnds(int min, int max)
    {
        m_bar.Min = min;
        m_bar.Max = max;
    }

    /// How far the ticker is from the top of its way, and what has been told since the last time.
    void Expect(double offset, const std::string& told)
    {
        EXPECT_DOUBLE_EQ(m_bar.imgResizeTicker.Top - m_bar.imgVBar.Top, offset);
        EXPECT_EQ(std::exchange(m_told, {}), told) << offset;
    }

    test::FakeTimers m_timers;
    forms::Playlist m_form;
    controls::ScrollBar& m_bar = m_form.scBar;
    ucScrollBar m_handlers{m_bar};
    controls::FormTimers m_formTimers{m_form, m_timers};
    std::string m_told;
};

TEST_F(SkinScrollBar, APositionThatIsSetIsHeldAndCountsFromOne)
{
    const auto expect = [&](int set, int position, double offset) {
        m_bar.SetPosition(set);
        EXPECT_EQ(m_bar.Position(), position) << set;
        Expect(offset, "");
    };
    expect(0, 1, 0);
    expect(31, 31, 3000);
    expect(99, 61, 6000);
    SetEnds(0, 20);
    expect(0, 0, -300); // above the track
    expect(20, 20, 5700);
    SetEnds(1, -9);
    expect(-11, -11, 5700); // nothing to scroll: only stored
}

TEST_F(SkinScrollBar, APressOnTheTrackBringsTheTickersNearerEndThere)
{
    const auto expect = [&](int before, double y, double offset, const char* told) {
        m_bar.SetPosition(before);
        m_bar.imgVBar.MouseDown(At(y));
        Expect(offset, told);
    };
    expect(1, 1000, 800, "down 8 "); // 760: the bottom comes to the press
    EXPECT_EQ(m_bar.Position(), 8);
    expect(31, 2049, 2000, "up 20 ");
    expect(1, 490, 200, "down 2 ");     // two and a half: to the even one
    expect(1, 590, 400, "down 4 ");     // three and a half
    expect(1, 100, -100, "up -1 ");     // kept: nothing holds it
    expect(31, 6240, 6000, "down 60 "); // kept: the last position stays out of reach
    SetEnds(1, 1);
    m_bar.imgVBar.MouseDown(At(0));
    Expect(6000, ""); // nothing to scroll, nothing to tell
}

TEST_F(SkinScrollBar, ADraggedTickerStaysOnItsTrack)
{
    m_bar.SetPosition(11);
    const controls::Image& ticker = m_bar.imgResizeTicker;
    const auto expect = [&](double y, double offset, const char* told) {
        ticker.MouseMove(At(y));
        Expect(offset, told);
    };
    expect(500, 1000, ""); // not held
    ticker.MouseDown(At(100));
    expect(149, 1000, "down 10 "); // kept: one less than was set
    expect(350, 1200, "down 12 "); // two and a half: to the even one
    expect(-1000, 100, "up 1 ");
    expect(-1000, 0, "up 0 ");
    expect(99000, 6000, "down 60 ");
    SetEnds(0, 6'000'000);
    m_bar.SetPosition(1);
    ticker.MouseMove(At(200));
    EXPECT_EQ(m_bar.Position(), 32767) << "as many positions at once as 16 bits hold";
    ticker.MouseUp(At(200));
    ticker.MouseMove(At(300));
    EXPECT_EQ(m_bar.Position(), 32767) << "let go";
}

TEST_F(SkinScrollBar, AnArrowRepeatsWhileItIsHeld)
{
    m_bar.SetPosition(60);
    m_bar.imgResizeDown.MouseDown(At(10));
    m_timers.Advance(24);
    EXPECT_EQ(m_told, "");
    m_timers.Advance(51);
    Expect(6000, "down 60 down 60 down 60 "); // at the end the ticker stays, the owner is told
    m_bar.imgResizeDown.MouseUp(At(10));
    m_timers.Advance(100);
    EXPECT_EQ(m_told, "");

    m_bar.Change = [this](bool goesDown, int position) {
        Note(goesDown, position);
        throw std::out_of_range("no such row");
    };
    m_bar.imgResizeUp.MouseDown(At(10));
    m_timers.Advance(50);
    EXPECT_EQ(m_told, "up 59 up 58 ");
    m_bar.SetScrollInterval(-1);
    EXPECT_EQ(m_bar.ScrollInterval(), 0);
    m_timers.Advance(1000);
    EXPECT_EQ(m_told, "up 59 up 58 ") << "no repetition any more";
}

TEST_F(SkinScrollBar, OnePieceStandsLitAndEachPassesItsEventsOn)
{
    std::vector<double> presses;
    int clicks = 0;
    m_bar.MouseDown = [&](const controls::MouseEvent& event) { presses.push_back(event.y); };
    m_bar.Click = [&] { ++clicks; };
    const auto pictures = [this] {
        std::vector<int> indexes;
        for (const controls::Image* piece :
             {&m_bar.imgVBar, &m_bar.imgResizeDown, &m_bar.imgResizeUp, &m_bar.imgResizeTicker})
            indexes.push_back(piece->Picture.Get().index);
        return indexes;
    };
    m_bar.imgVBar.MouseMove(At(0));
    EXPECT_THAT(pictures(), ElementsAre(3, 4, 7, 10));
    m_bar.imgResizeDown.MouseDown(At(77));
    m_bar.imgResizeDown.MouseMove(At(0));
    EXPECT_THAT(pictures(), ElementsAre(1, 5, 7, 10)) << "held";
    m_bar.imgResizeDown.MouseUp(At(0));
    m_bar.imgResizeTicker.MouseDown(At(78));
    EXPECT_THAT(pictures(), ElementsAre(1, 6, 7, 11));
    m_bar.imgResizeTicker.MouseUp(At(0));
    m_bar.imgResizeUp.MouseMove(At(0));
    EXPECT_THAT(pictures(), ElementsAre(1, 4, 9, 10));
    m_bar.imgVBar.Click();
    m_bar.imgResizeBar.Click();
    EXPECT_THAT(presses, ElementsAre(77, 78));
    EXPECT_EQ(clicks, 2);
}

} // namespace
} // namespace velmo
