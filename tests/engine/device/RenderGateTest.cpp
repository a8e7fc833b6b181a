#include "device/RenderGate.h"

#include "device/DeviceClock.h"

#include <gmock/gmock.h>

#include <array>
#include <atomic>
#include <thread>

namespace velmo::engine {
namespace {

// Final, and never deleted as a Renderer.
// NOLINTNEXTLINE(cppcoreguidelines-virtual-class-destructor)
struct CountingRenderer final : Renderer
{
    void Render(float*, std::size_t) noexcept override
    {
        std::this_thread::yield();
        ++done;
    }
    std::size_t FramesReady(std::size_t wanted) noexcept override { return wanted; }
    void WaitForFrames() noexcept override {}
    void WakeWaiting() noexcept override {}

    std::atomic<std::uint64_t> done = 0;
};

TEST(RenderGate, NoRenderRunsAfterCloseNorIsAnyCounted)
{
    for (int round = 0; round < 50; ++round) {
        CountingRenderer renderer;
        DeviceClock clock;
        RenderGate gate(renderer, clock);
        std::array<float, 20> block = {};
        const auto render = [&] { return gate.Render(block.data(), 10, 2); };
        EXPECT_FALSE(render()) << "not open yet";
        gate.Open();
        std::jthread output([&] {
            block.fill(0.5f);
            while (render()) {}
        });
        while (renderer.done < 3)
            std::this_thread::yield();
        gate.Close();
        const std::uint64_t done = renderer.done;
        output.join();
        gate.Open();
        EXPECT_FALSE(render()) << "closed for good";
        EXPECT_EQ(renderer.done, done);
        EXPECT_EQ(clock.Rendered(), 10 * done);
        EXPECT_THAT(block, testing::Each(0.0f));
    }
}

} // namespace
} // namespace velmo::engine
