#include "device/CpuMeter.h"

#include <gtest/gtest.h>

namespace velmo::engine {
namespace {

using namespace std::chrono_literals;

TEST(CpuWindow, CountsTheLastSecondAndNothingBeforeABreak)
{
    struct Step
    {
        std::chrono::milliseconds now;
        std::chrono::milliseconds used;
        float percent;
    };
    CpuWindow window;
    for (const Step& step : {
             Step{10'000ms, 500ms,  0    },
             {10'200ms, 510ms,  5    },
             {10'400ms, 520ms,  5    },
             {10'600ms, 530ms,  5    },
             {10'800ms, 540ms,  5    },
             {11'000ms, 550ms,  5    },
             {11'200ms, 750ms,  24   }, // from 510 on
             {90'000ms, 760ms,  0    }, // the minute between says nothing about now
             {90'400ms, 1160ms, 100  },
             {90'800ms, 900ms,  17.5f}  // a thread has ended
    }) {
        EXPECT_TRUE(window.IsDue(step.now));
        EXPECT_FLOAT_EQ(window.Add(step.now, step.used), step.percent) << step.now.count();
        EXPECT_FALSE(window.IsDue(step.now + 199ms));
    }
}

} // namespace
} // namespace velmo::engine
