#include "device/RenderGate.h"

#include "FakeRenderer.h"

#include "device/DeviceClock.h"

#include <gmock/gmock.h>

#include <array>
#include <thread>

namespace velmo::engine {
namespace {

using test::FakeRenderer;

struct Gate
{
    bool Render() { return gate.Render(block.data(), 10, 2); }

    FakeRenderer renderer;
    DeviceClock clock;
    RenderGate gate{renderer, clock};
    std::array<float, 20> block{};
};

TEST(RenderGate, ShutItGivesSilenceAndCountsNothing)
{
    Gate one;
    one.block.fill(0.5f);
    EXPECT_FALSE(one.Render());
    EXPECT_THAT(one.block, testing::Each(0.0f));
    EXPECT_EQ(one.gate.FramesReady(10), 0u);
    one.gate.Open();
    EXPECT_TRUE(one.Render());
    EXPECT_EQ(one.clock.Rendered(), 10u);
    EXPECT_EQ(one.gate.FramesReady(10), 10u);
    one.gate.Close();
    one.gate.Open();
    EXPECT_FALSE(one.Render());
    EXPECT_EQ(one.clock.Rendered(), 10u);
}

TEST(RenderGate, NoRenderRunsAfterClose)
{
    for (int round = 0; round < 50; ++round) {
        Gate one;
        one.gate.Open();
        std::thread output([&] {
            while (one.Render()) {}
        });
        EXPECT_TRUE(one.renderer.AwaitFrames(30));
        one.gate.Close();
        one.renderer.RefuseRenders();
        output.join();
        EXPECT_EQ(one.renderer.LateCalls(), 0);
    }
}

TEST(RenderGate, CloseEndsAWaitForFrames)
{
    Gate one;
    one.renderer.SupplyUpTo(0);
    one.gate.Open();
    std::thread output([&] { one.gate.WaitForFrames(); });
    EXPECT_TRUE(one.renderer.Await([&] { return one.renderer.Waits() == 1; }));
    one.gate.Close();
    output.join();
    one.gate.WaitForFrames();
    EXPECT_EQ(one.renderer.Waits(), 1);
}

} // namespace
} // namespace velmo::engine
