#include "controls/TimerBinding.h"

#include "support/FakeTimers.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace velmo::controls {
namespace {

class TimerBindingTest : public testing::Test
{
protected:
    TimerBindingTest()
    {
        m_timer.Tick = [this] { ++m_ticks; };
    }

    int TicksIn(int durationMs)
    {
        m_ticks = 0;
        m_clock.Advance(durationMs);
        return m_ticks;
    }

    int m_ticks = 0;
    test::FakeTimers m_clock;
    Form m_form{"timers", "", 1, 1, BorderStyle::None};
    Timer m_timer{m_form, "timer", 100, true, TimerAccuracy::Precise};
    Label m_label{m_form, "label", {}, "no timer"};
    FormTimers m_timers{m_form, m_clock};
};

TEST_F(TimerBindingTest, TicksAtItsIntervalWhileEnabledAndNotAtRest)
{
    EXPECT_EQ(TicksIn(350), 3);
    m_timer.ToolTipText = "x"; // none of its affairs
    EXPECT_EQ(TicksIn(50), 1);
    m_timer.Enabled = false;
    EXPECT_EQ(TicksIn(1000), 0);
    m_timer.Enabled = true;
    EXPECT_EQ(TicksIn(99), 0) << "a whole interval from the moment it is enabled";
    EXPECT_EQ(TicksIn(1), 1);
    m_timer.Resting = true;
    m_timer.Enabled = false;
    m_timer.Enabled = true;
    EXPECT_EQ(TicksIn(1000), 0);
    m_timer.Resting = false;
    EXPECT_EQ(TicksIn(150), 1);
}

TEST_F(TimerBindingTest, NewIntervalStartsAnewAndIsNeverShorterThanTheLeastTime)
{
    EXPECT_EQ(TicksIn(90), 0);
    m_timer.Interval = 50;
    EXPECT_EQ(TicksIn(49), 0);
    EXPECT_EQ(TicksIn(101), 3);
    m_timer.LeastMs = 10;
    EXPECT_EQ(TicksIn(100), 2) << "longer intervals stay";
    m_timer.Interval = 1;
    EXPECT_EQ(TicksIn(100), 10);
    for (const int never : {0, -1}) {
        m_timer.Interval = never;
        m_timer.Enabled = false;
        m_timer.Enabled = true;
        EXPECT_EQ(TicksIn(2000), 0);
    }
    m_timer.Interval = 1;
    m_timer.LeastMs = 0;
    EXPECT_EQ(TicksIn(100), 100);
}

TEST_F(TimerBindingTest, TickMayDisableItsTimerAndFailWithoutStoppingIt)
{
    m_timer.Tick = [this] {
        if (++m_ticks == 3)
            m_timer.Enabled = false;
        throw std::runtime_error("tick");
    };
    testing::internal::CaptureStderr();
    EXPECT_EQ(TicksIn(1000), 3);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "velmo: tick\nvelmo: tick\nvelmo: tick\n");
}

} // namespace
} // namespace velmo::controls
