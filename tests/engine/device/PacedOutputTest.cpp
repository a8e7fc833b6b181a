#include "Environment.h"
#include "FakeRenderer.h"

#include "device/DeviceControl.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace velmo::engine {
namespace {

using namespace std::chrono_literals;
using std::chrono::steady_clock;
using test::Environment;
using test::FakeRenderer;

class PacedOutput : public testing::Test
{
protected:
    Environment m_audio{"VELMO_AUDIO", "null"};
    FakeRenderer m_renderer;
    DeviceControl m_control{m_renderer};
};

TEST_F(PacedOutput, KeepsTheDevicesRate)
{
    for (const std::uint32_t rate : {8000u, 96000u}) {
        // It may never be fast; whether it's slow shows the best of some tries, for a busy machine
        // is late.
        auto best = steady_clock::duration::max();
        for (int i = 0; i < 5 && best > 275ms; ++i) {
            ASSERT_EQ(m_control.Open({.sampleRate = rate, .channels = 2}), DeviceError::None);
            EXPECT_EQ(m_control.SampleRate(), rate);
            const auto start = steady_clock::now();
            m_control.SetRunning(true);
            ASSERT_TRUE(m_renderer.Await([&] { return m_control.HeardFrames() >= rate / 4; }));
            const auto took = steady_clock::now() - start;
            m_control.Close();
            ASSERT_GE(took, 249'900us);
            best = std::min(best, took);
        }
        EXPECT_LE(best, 275ms) << rate;
    }
}

TEST_F(PacedOutput, StopAndStartLoseNoFrameAndStoppedItStandsStill)
{
    ASSERT_EQ(m_control.Open({}), DeviceError::None);
    for (int i = 0; i < 10; ++i) {
        const std::uint64_t before = m_renderer.Frames();
        m_control.SetRunning(true);
        ASSERT_TRUE(m_renderer.AwaitFrames(before + 1));
        m_control.SetRunning(false);
    }
    ASSERT_TRUE(m_renderer.AwaitStandstill());
    const std::uint64_t rendered = m_control.RenderedFrames();
    const std::uint64_t heard = m_control.HeardFrames();
    EXPECT_LE(heard, rendered);
    EXPECT_FALSE(m_renderer.Await([&] { return m_control.HeardFrames() != heard; }, 100ms));
    m_control.SetRunning(true);
    ASSERT_TRUE(m_renderer.Await([&] { return m_control.HeardFrames() > rendered; }));
    m_control.Close();
    EXPECT_EQ(m_control.RenderedFrames(), m_renderer.Frames());
}

TEST_F(PacedOutput, CloseEndsRenderingAndOpenCountsAnew)
{
    m_control.Close();
    for (int i = 0; i < 30; ++i) {
        FakeRenderer fresh;
        DeviceControl ours(fresh);
        ASSERT_EQ(ours.Open({}), DeviceError::None);
        ours.SetRunning(true);
        ASSERT_TRUE(fresh.AwaitFrames(1));
        ours.Close();
        fresh.RefuseRenders();
        ours.SetRunning(true);
        ASSERT_EQ(ours.Open({}), DeviceError::None);
        EXPECT_EQ(ours.RenderedFrames(), 0u);
        EXPECT_EQ(ours.HeardFrames(), 0u);
        EXPECT_EQ(fresh.LateCalls(), 0);
    }
}

} // namespace
} // namespace velmo::engine
