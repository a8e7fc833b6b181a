#include "controls/TimerBinding.h"

#include "support/FakeTimers.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace velmo::controls {
namespace {

class TimerForm final : public Form
{
public:
    TimerForm()
        : Form("timers", "", 1, 1, BorderStyle::None)
    {
        timer.Tick = [this] { ++ticks; };
    }
    Timer timer{*this, "timer", 100, true, TimerAccuracy::Precise};
    Label notATimer{*this, "label", {}, ""};
    Timer coarse{*this, "coarse", 10, false, TimerAccuracy::Coarse};
    int ticks = 0;
};

class TimerBindingTest : public testing::Test
{
protected:
    int TicksIn(int durationMs)
    {
        form.ticks = 0;
        clock.Advance(durationMs);
        return form.ticks;
    }

    test::FakeTimers clock;
    TimerForm form;
    FormTimers timers{form, clock};
};

TEST_F(TimerBindingTest, TicksAtItsIntervalWhileEnabled)
{
    EXPECT_EQ(TicksIn(350), 3);
    form.timer.Enabled = false;
    EXPECT_EQ(TicksIn(1000), 0);
    form.timer.Enabled = true;
    EXPECT_EQ(TicksIn(99), 0); // a whole interval from the moment it is enabled
    EXPECT_EQ(TicksIn(1), 1);
    form.timer.Resting = true;
    form.timer.Enabled = false;
    form.timer.Enabled = true;
    EXPECT_EQ(TicksIn(1000), 0) << "at rest it stays enabled and does not tick";
    form.timer.Resting = false;
    EXPECT_EQ(TicksIn(150), 1);
}

TEST_F(TimerBindingTest, NewIntervalStartsAnew)
{
    EXPECT_EQ(TicksIn(90), 0);
    form.timer.Interval = 50;
    EXPECT_EQ(TicksIn(49), 0);
    EXPECT_EQ(TicksIn(101), 3);
}

TEST_F(TimerBindingTest, IntervalsOfZeroOrBelowNeverTick)
{
    for (const int interval : {0, -1, -1000}) {
        form.timer.Interval = interval;
        EXPECT_EQ(TicksIn(2000), 0);
        form.timer.Enabled = false;
        form.timer.Enabled = true;
        EXPECT_EQ(TicksIn(2000), 0);
    }
    form.timer.Interval = 10;
    EXPECT_EQ(TicksIn(20), 2);
}

TEST_F(TimerBindingTest, NoTickComesSoonerThanTheLeastTime)
{
    form.timer.LeastMs = 10;
    EXPECT_EQ(TicksIn(300), 3) << "longer intervals stay";
    form.timer.Interval = 1;
    EXPECT_EQ(TicksIn(100), 10);
    form.timer.Interval = 0;
    EXPECT_EQ(TicksIn(100), 0);
    form.timer.Interval = 1;
    form.timer.LeastMs = 0;
    EXPECT_EQ(TicksIn(100), 100);
}

TEST_F(TimerBindingTest, OtherPropertiesDoNotDisturbTheInterval)
{
    EXPECT_EQ(TicksIn(60), 0);
    form.timer.ToolTipText = "x";
    form.timer.Interval = 100;
    form.timer.Enabled = true;
    EXPECT_EQ(TicksIn(40), 1);
}

TEST_F(TimerBindingTest, TickMayDisableItsTimerAndFailWithoutStoppingIt)
{
    int ticks = 0;
    form.timer.Tick = [&] {
        if (++ticks == 3)
            form.timer.Enabled = false;
        throw std::runtime_error("tick");
    };
    testing::internal::CaptureStderr();
    clock.Advance(1000);
    EXPECT_EQ(ticks, 3);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "velmo: tick\nvelmo: tick\nvelmo: tick\n");
}

} // namespace
} // namespace velmo::controls
