#include "Environment.h"
#include "FakeRenderer.h"

#include "device/DeviceControl.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

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

double Seconds(steady_clock::duration time)
{
    return std::chrono::duration<double>(time).count();
}

TEST_F(PacedOutput, KeepsTheDevicesRate)
{
    for (const std::uint32_t rate : {8000u, 22050u, 44100u, 96000u}) {
        // It may never be fast; whether it's slow shows the best of some tries, for a busy machine
        // is late.
        double best = 10;
        for (int i = 0; i < 5 && best > 0.55; ++i) {
            ASSERT_EQ(m_control.Open({.sampleRate = rate, .channels = 2}), DeviceError::None);
            EXPECT_EQ(m_control.SampleRate(), rate);
            const auto start = steady_clock::now();
            m_control.SetRunning(true);
            ASSERT_TRUE(m_renderer.Await([&] { return m_control.HeardFrames() >= rate / 2; }));
            const double took = Seconds(steady_clock::now() - start);
            m_control.Close();
            ASSERT_GE(took, 0.4999);
            best = std::min(best, took);
        }
        EXPECT_LE(best, 0.55) << rate;
    }
}

TEST_F(PacedOutput, RendersTheFirstBlockAtOnce)
{
    // On an idle machine it takes some 0.1 ms; the best of some tries isn't disturbed by others'
    // work.
    auto best = steady_clock::duration::max();
    for (int i = 0; i < 20 && best > 2ms; ++i) {
        FakeRenderer fresh;
        DeviceControl ours(fresh);
        ASSERT_EQ(ours.Open({}), DeviceError::None);
        const auto start = steady_clock::now();
        ours.SetRunning(true);
        ASSERT_TRUE(fresh.AwaitFrames(1));
        best = std::min(best, fresh.FirstRender() - start);
    }
    EXPECT_LE(best, 8ms) << "it has waited for the end of its first block, of 10 ms";
}

TEST_F(PacedOutput, StopAndStartLoseNoFrame)
{
    ASSERT_EQ(m_control.Open({}), DeviceError::None);
    for (int i = 0; i < 20; ++i) {
        const std::uint64_t before = m_renderer.Frames();
        m_control.SetRunning(true);
        ASSERT_TRUE(m_renderer.AwaitFrames(before + 1));
        m_control.SetRunning(false);
    }
    const std::uint64_t rendered = m_renderer.Frames();
    m_control.SetRunning(true);
    ASSERT_TRUE(m_renderer.Await([&] { return m_control.HeardFrames() > rendered; }));
    m_control.Close();
    EXPECT_EQ(m_control.RenderedFrames(), m_renderer.Frames());
}

TEST_F(PacedOutput, StoppedItStandsStillAndSleeps)
{
    ASSERT_EQ(m_control.Open({}), DeviceError::None);
    m_control.SetRunning(true);
    ASSERT_TRUE(m_renderer.AwaitFrames(2000));
    m_control.SetRunning(false);
    ASSERT_TRUE(m_renderer.AwaitStandstill());
    const std::uint64_t rendered = m_control.RenderedFrames();
    const std::uint64_t heard = m_control.HeardFrames();
    EXPECT_FALSE(m_renderer.Await([&] { return m_control.HeardFrames() != heard; }, 100ms));
    EXPECT_EQ(m_control.RenderedFrames(), rendered);
    EXPECT_LE(heard, rendered);
}

TEST_F(PacedOutput, HeardIsMonotonicOnEveryThread)
{
    ASSERT_EQ(m_control.Open({}), DeviceError::None);
    std::atomic<bool> done{false};
    std::atomic<int> faults{0};
    std::vector<std::thread> readers;
    readers.reserve(3);
    for (int i = 0; i < 3; ++i)
        readers.emplace_back([&] {
            for (std::uint64_t last = 0; !done;) {
                const std::uint64_t heard = m_control.HeardFrames();
                if (heard < last || heard > m_control.RenderedFrames())
                    ++faults;
                last = heard;
            }
        });
    for (int i = 0; i < 10; ++i) {
        m_control.SetRunning(true);
        EXPECT_TRUE(m_renderer.Await(
            [&, n = m_control.HeardFrames()] { return m_control.HeardFrames() > n; }));
        m_control.SetRunning(false);
    }
    done = true;
    for (std::thread& reader : readers)
        reader.join();
    EXPECT_EQ(faults, 0);
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

TEST_F(PacedOutput, OpenOfAnOutputThatNobodyKnowsFails)
{
    for (const char* value : {"alsa", "Null", "wav", "wav:", "wav-fast:"}) {
        const Environment unknown("VELMO_AUDIO", value);
        EXPECT_EQ(m_control.Open({}), DeviceError::CannotOpen) << value;
        m_control.SetRunning(true);
        EXPECT_EQ(m_control.RenderedFrames(), 0u);
    }
}

} // namespace
} // namespace velmo::engine
