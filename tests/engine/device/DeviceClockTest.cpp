#include "device/DeviceClock.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace velmo::engine {
namespace {

using namespace std::chrono_literals;

constexpr SteadyTime Start{1000s};

TEST(DeviceClock, HeardFollowsTimeButNeverFallsNorPassesWhatIsRendered)
{
    DeviceClock clock;
    clock.Reset(1000);
    clock.Run(0, Start);
    EXPECT_EQ(clock.Heard(Start + 1s), 0u);
    clock.AddRendered(1000);
    EXPECT_EQ(clock.Heard(Start - 1s), 0u);
    EXPECT_EQ(clock.Heard(Start + 100ms), 100u);
    clock.Run(50, Start + 100ms);
    EXPECT_EQ(clock.Heard(Start + 110ms), 100u);
    EXPECT_EQ(clock.Heard(Start + 160ms), 110u);
    clock.Stand(20);
    EXPECT_EQ(clock.Heard(Start + 10s), 110u);
    clock.FollowRendered();
    EXPECT_EQ(clock.Heard(Start), 1000u);
    clock.Reset(1000);
    EXPECT_EQ(clock.Heard(Start), 0u);
}

TEST(DeviceClock, LongTimesConvertWithoutOverflow)
{
    constexpr std::uint64_t Year = 365ull * 24 * 3600;
    for (const std::uint32_t rate : {1u, 44100u, 192000u}) {
        EXPECT_EQ(FramesIn(std::chrono::seconds(Year) + 500ms, rate), Year * rate + rate / 2);
        EXPECT_EQ(TimeOf(Year * rate, rate), std::chrono::seconds(Year));
    }
    EXPECT_EQ(FramesIn(-1ns, 44100), 0u);
}

TEST(DeviceClock, ReadersOnOtherThreadsSeeOneSnapshotAndNoStepBack)
{
    DeviceClock clock;
    clock.Reset(1000);
    std::atomic<bool> done{false};
    std::atomic<int> faults{0};
    std::vector<std::thread> readers;
    readers.reserve(3);
    for (int i = 0; i < 3; ++i)
        readers.emplace_back([&] {
            for (std::uint64_t last = 0; !done;) {
                const std::uint64_t heard = clock.Heard(Start);
                if (heard < last || heard > clock.Rendered())
                    ++faults;
                last = heard;
            }
        });
    // Either snapshot alone tells at most the block's first frame; their mixture tells far more.
    for (std::uint64_t block = 0; block < 50000; ++block) {
        clock.AddRendered(1000);
        if (block % 2 == 0)
            clock.Run(block, Start);
        else
            clock.Run(0, Start - std::chrono::milliseconds(block));
        if (clock.Heard(Start) > block)
            ++faults;
    }
    done = true;
    for (std::thread& reader : readers)
        reader.join();
    EXPECT_EQ(faults, 0);
    EXPECT_EQ(clock.Heard(Start), 49999u);
}

} // namespace
} // namespace velmo::engine
