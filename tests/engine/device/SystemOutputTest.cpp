#include "Environment.h"
#include "FakeRenderer.h"
#include "PulseServer.h"

#include "device/DeviceControl.h"

#include <gmock/gmock.h>

#include <memory>
#include <string>

namespace velmo::engine {
namespace {

using namespace std::chrono_literals;
using std::chrono::steady_clock;
using test::Environment;
using test::FakeRenderer;
using test::PulseServer;
using testing::HasSubstr;

class SystemOutput : public testing::Test
{
protected:
    /// Waits until `frames` more are heard than now.
    bool AwaitHeard(std::uint64_t frames)
    {
        return m_renderer.Await(
            [&, n = m_control->HeardFrames()] { return m_control->HeardFrames() >= n + frames; });
    }

    bool AwaitStreamOnServer()
    {
        return m_renderer.Await([&] {
            return m_server.Control("list short sink-inputs").find("float32le")
                   != std::string::npos;
        });
    }

    Environment m_audio{"VELMO_AUDIO", std::nullopt};
    PulseServer m_server;
    FakeRenderer m_renderer;
    std::unique_ptr<DeviceControl> m_control = std::make_unique<DeviceControl>(m_renderer);
};

template<typename Action>
steady_clock::duration TimeOf(Action action)
{
    const auto start = steady_clock::now();
    action();
    return steady_clock::now() - start;
}

TEST_F(SystemOutput, PlaysToTheServerAtItsClock)
{
    m_server.Start();
    testing::internal::CaptureStderr();
    ASSERT_EQ(m_control->Open({.sampleRate = 48000, .channels = 2}), DeviceError::None);
    EXPECT_EQ(m_control->RenderedFrames(), 0u);
    m_control->SetRunning(true);
    ASSERT_TRUE(AwaitHeard(4800));
    EXPECT_TRUE(AwaitStreamOnServer());
    const auto start = steady_clock::now();
    const std::uint64_t before = m_control->HeardFrames();
    ASSERT_TRUE(AwaitHeard(24'000));
    const double took = std::chrono::duration<double>(steady_clock::now() - start).count();
    // The clock is read between two readings of the time, however far apart they are.
    const auto heard = static_cast<double>(m_control->HeardFrames() - before) / 48000;
    const double tookAtMost = std::chrono::duration<double>(steady_clock::now() - start).count();
    EXPECT_GE(heard, took - 0.1);
    EXPECT_LE(heard, tookAtMost + 0.1);
    EXPECT_GT(m_control->RenderedFrames(), m_control->HeardFrames());

    m_control->SetRunning(false);
    EXPECT_TRUE(m_renderer.AwaitStandstill());
    const std::uint64_t stopped = m_control->HeardFrames();
    m_control->SetRunning(true);
    EXPECT_TRUE(AwaitHeard(4800));
    EXPECT_GE(m_control->HeardFrames(), stopped);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(SystemOutput, TakesAllSpeakersWhereTheyAreWanted)
{
    m_server.Start();
    m_server.Control("load-module module-null-sink sink_name=six norewinds=1 channels=6");
    m_server.Control("set-default-sink six");
    for (const bool all : {true, false}) {
        FakeRenderer renderer(all ? 6 : 2);
        DeviceControl control(renderer);
        ASSERT_EQ(control.Open({.allSpeakers = all}), DeviceError::None);
        EXPECT_EQ(control.Description().speakers, 6u);
        EXPECT_EQ(control.Description().channels, all ? 6u : 2u);
        control.SetRunning(true);
        ASSERT_TRUE(renderer.Await([&] { return control.HeardFrames() > 4410; }));
        EXPECT_THAT(m_server.Control("list short sink-inputs"),
                    HasSubstr(all ? "float32le 6ch" : "float32le 2ch"));
    }
}

TEST_F(SystemOutput, LostWhileStoppedComesBackWithTheNextStart)
{
    m_server.Start();
    ASSERT_EQ(m_control->Open({}), DeviceError::None);
    m_server.Kill();
    m_server.Start();
    m_control->SetRunning(true);
    EXPECT_TRUE(AwaitHeard(4410));
    EXPECT_TRUE(AwaitStreamOnServer());
}

TEST_F(SystemOutput, HungServerDoesNotHoldUpClose)
{
    m_server.Start();
    ASSERT_EQ(m_control->Open({}), DeviceError::None);
    m_control->SetRunning(true);
    ASSERT_TRUE(AwaitHeard(4410));
    m_server.Hang();
    m_control->SetRunning(false);
    EXPECT_LT(TimeOf([&] { m_control->Close(); }), 5s);
    m_renderer.RefuseRenders();
    m_control.reset();
    m_server.Continue();
    EXPECT_FALSE(m_renderer.Await([&] { return m_renderer.LateCalls() > 0; }, 300ms));
}

TEST_F(SystemOutput, ServerThatHangsAtOpenIsReplacedBySilence)
{
    m_server.Start();
    m_server.Hang();
    testing::internal::CaptureStderr();
    EXPECT_LT(TimeOf([&] { EXPECT_EQ(m_control->Open({}), DeviceError::None); }), 10s);
    EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("does not answer"));
    m_control->SetRunning(true);
    EXPECT_TRUE(AwaitHeard(4410));
    m_server.Continue();
    EXPECT_TRUE(AwaitStreamOnServer());
    EXPECT_TRUE(AwaitHeard(4410));
}

TEST_F(SystemOutput, WithoutAServerItPlaysSilentlyUntilOneAppears)
{
    testing::internal::CaptureStderr();
    ASSERT_EQ(m_control->Open({}), DeviceError::None);
    m_control->SetRunning(true);
    EXPECT_TRUE(AwaitHeard(100'000)); // one attempt in vain comes in between
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_EQ(said, "velmo: no sound device found; playing silently until one appears\n");
    const std::uint64_t heard = m_control->HeardFrames();
    m_server.Start();
    EXPECT_TRUE(AwaitStreamOnServer());
    EXPECT_TRUE(AwaitHeard(4410));
    EXPECT_GT(m_control->HeardFrames(), heard);
    EXPECT_EQ(m_control->RenderedFrames(), m_renderer.Frames());
}

TEST_F(SystemOutput, ServerWithoutASinkCountsAsNoDevice)
{
    m_server.Start();
    m_server.RemoveSink();
    testing::internal::CaptureStderr();
    ASSERT_EQ(m_control->Open({}), DeviceError::None);
    m_control->SetRunning(true);
    EXPECT_TRUE(AwaitHeard(4410));
    EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("no sound device found"));
    m_server.AddSink();
    EXPECT_TRUE(AwaitStreamOnServer());
}

TEST_F(SystemOutput, OpenAndCloseInARow)
{
    m_server.Start();
    for (int i = 0; i < 20; ++i) {
        ASSERT_EQ(m_control->Open({}), DeviceError::None);
        m_control->SetRunning(true);
        if (i % 2 == 0) {
            ASSERT_TRUE(AwaitHeard(1));
        }
        m_control->Close();
    }
}

} // namespace
} // namespace velmo::engine
