#include "windows/ucScrollBar.h"

#include "controls/TimerBinding.h"
#include "forms/Playlist.h"
#include "support/FakeTimers.h"

#include <gmock/gmock.h>

#include <utility>
#include <vector>

namespace velmo {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

controls::MouseEvent At(double y)
{
    return {.button = controls::MouseButton::Left, .shift = 0, .x = 30, .y = y};
}

/// The bar of the playlist: its ticker has a way of 6000 twips.
class SkinScrollBar : public ::testing::Test
{
protected:
    SkinScrollBar()
    {
        m_bar.Change = [this](bool goesDown, std::int32_t position) {
            m_told.emplace_back(goesDown, position);
        };
    }

    void SetEnds(std::int32_t min, std::int32_t max)
    {
        m_bar.Min = min;
        m_bar.Max = max;
    }

    double Offset() const { return m_bar.imgResizeTicker.Top - m_bar.imgVBar.Top; }

    test::FakeTimers m_timers;
    forms::Playlist m_form;
    controls::ScrollBar& m_bar = m_form.scBar;
    ucScrollBar m_handlers{m_bar};
    controls::FormTimers m_formTimers{m_form, m_timers};
    std::vector<std::pair<bool, std::int32_t>> m_told;
};

TEST_F(SkinScrollBar, APositionThatIsSetIsHeldAndCountsFromOne)
{
    const auto expect = [&](std::int32_t set, std::int32_t position, double offset) {
        m_bar.SetPosition(set);
        EXPECT_EQ(m_bar.Position(), position) << set;
        EXPECT_DOUBLE_EQ(Offset(), offset) << set;
    };
    SetEnds(1, 61);
    expect(0, 1, 0);
    expect(31, 31, 3000);
    expect(99, 61, 6000);
    SetEnds(0, 20);
    expect(0, 0, -300); // above the track
    expect(20, 20, 5700);
    SetEnds(1, -9);
    expect(-11, -11, 5700); // nothing to scroll: only stored
    EXPECT_THAT(m_told, IsEmpty());
}

TEST_F(SkinScrollBar, APressOnTheTrackBringsTheTickersNearerEndThere)
{
    SetEnds(1, 61);
    const auto expect = [&](int before, double y, double offset, bool goesDown, int position) {
        m_told.clear();
        m_bar.SetPosition(before);
        m_bar.imgVBar.MouseDown(At(y));
        EXPECT_DOUBLE_EQ(Offset(), offset) << y;
        EXPECT_THAT(m_told, ElementsAre(std::pair(goesDown, position))) << y;
        EXPECT_EQ(m_bar.Position(), position);
    };
    expect(1, 1000, 800, true, 8); // 760: the bottom comes to the press
    expect(31, 2049, 2000, false, 20);
    expect(1, 490, 200, true, 2);     // two and a half: to the even one
    expect(1, 590, 400, true, 4);     // three and a half
    expect(1, 100, -100, false, -1);  // kept: nothing holds it
    expect(31, 6240, 6000, true, 60); // kept: the last position stays out of reach
    SetEnds(1, 1);
    m_bar.imgVBar.MouseDown(At(0));
    EXPECT_DOUBLE_EQ(Offset(), 6000);
    EXPECT_EQ(m_told.size(), 1U) << "nothing to scroll, nothing to tell";
}

TEST_F(SkinScrollBar, ADraggedTickerStaysOnItsTrack)
{
    SetEnds(1, 61);
    m_bar.SetPosition(11);
    const controls::Image& ticker = m_bar.imgResizeTicker;
    ticker.MouseMove(At(500));
    EXPECT_THAT(m_told, IsEmpty()) << "not held";
    ticker.MouseDown(At(100));
    const auto expect = [&](double y, double offset, bool goesDown, int position) {
        m_told.clear();
        ticker.MouseMove(At(y));
        EXPECT_DOUBLE_EQ(Offset(), offset) << y;
        EXPECT_THAT(m_told, ElementsAre(std::pair(goesDown, position))) << y;
    };
    expect(149, 1000, true, 10); // kept: one less than was set
    expect(350, 1200, true, 12); // two and a half: to the even one
    expect(-1000, 100, false, 1);
    expect(-1000, 0, false, 0);
    expect(99000, 6000, true, 60);
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
    SetEnds(1, 61);
    m_bar.SetPosition(60);
    m_bar.imgResizeDown.MouseDown(At(10));
    m_timers.Advance(24);
    EXPECT_THAT(m_told, IsEmpty());
    m_timers.Advance(51);
    // At the end the ticker stays, and the owner is told all the same.
    EXPECT_THAT(m_told, ElementsAre(std::pair(true, 60), std::pair(true, 60), std::pair(true, 60)));
    EXPECT_DOUBLE_EQ(Offset(), 6000);
    m_bar.imgResizeDown.MouseUp(At(10));
    m_timers.Advance(100);
    EXPECT_EQ(m_told.size(), 3U);

    m_told.clear();
    m_bar.Change = [this](bool goesDown, std::int32_t position) {
        m_told.emplace_back(goesDown, position);
        throw std::out_of_range("no such row");
    };
    m_bar.imgResizeUp.MouseDown(At(10));
    m_timers.Advance(50);
    EXPECT_THAT(m_told, ElementsAre(std::pair(false, 59), std::pair(false, 58)));
    m_bar.SetScrollInterval(-1);
    EXPECT_EQ(m_bar.ScrollInterval(), 0);
    m_timers.Advance(1000);
    EXPECT_EQ(m_told.size(), 2U) << "no repetition any more";
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
