#include "device/RenderGate.h"

#include "FakeRenderer.h"

#include "device/DeviceClock.h"

#include <gmock/gmock.h>

#include <array>
#include <thread>

namespace velmo::engine {
namespace {

using test::FakeRenderer;

class RenderGateTest : public testing::Test
{
protected:
    FakeRenderer m_renderer;
    DeviceClock m_clock;
    RenderGate m_gate{m_renderer, m_clock};
    std::array<float, 20> m_block{};
};

TEST_F(RenderGateTest, ShutItGivesSilenceAndCountsNothing)
{
    m_block.fill(0.5f);
    EXPECT_FALSE(m_gate.Render(m_block.data(), 10, 2));
    EXPECT_THAT(m_block, testing::Each(0.0f));
    EXPECT_EQ(m_gate.FramesReady(10), 0u);
    m_gate.Open();
    EXPECT_TRUE(m_gate.Render(m_block.data(), 10, 2));
    EXPECT_EQ(m_clock.Rendered(), 10u);
    EXPECT_EQ(m_gate.FramesReady(10), 10u);
    m_gate.Close();
    m_gate.Open();
    EXPECT_FALSE(m_gate.Render(m_block.data(), 10, 2));
    EXPECT_EQ(m_clock.Rendered(), 10u);
}

TEST_F(RenderGateTest, NoRenderRunsAfterClose)
{
    for (int round = 0; round < 50; ++round) {
        FakeRenderer ours;
        RenderGate oursGate(ours, m_clock);
        oursGate.Open();
        std::thread output([&] {
            std::array<float, 20> out{};
            while (oursGate.Render(out.data(), 10, 2)) {}
        });
        EXPECT_TRUE(ours.AwaitFrames(30));
        oursGate.Close();
        ours.RefuseRenders();
        output.join();
        EXPECT_EQ(ours.LateCalls(), 0);
    }
}

TEST_F(RenderGateTest, CloseEndsAWaitForFrames)
{
    m_renderer.SupplyUpTo(0);
    m_gate.Open();
    std::thread output([&] { m_gate.WaitForFrames(); });
    EXPECT_TRUE(m_renderer.Await([&] { return m_renderer.Waits() == 1; }));
    m_gate.Close();
    output.join();
    m_gate.WaitForFrames();
    EXPECT_EQ(m_renderer.Waits(), 1);
}

} // namespace
} // namespace velmo::engine
