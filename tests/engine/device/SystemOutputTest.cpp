// The system's output where a sound server hangs, or isn't there, as it's opened and closed.

#include "PulseServer.h"

#include "engine/abi/EngineTest.h"

#include <gmock/gmock.h>

namespace velmo::engine::test {
namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;

class SystemOutput : public EngineTest
{
protected:
    /// Opens the output; what it says of that.
    static std::string SaidByInit()
    {
        testing::internal::CaptureStderr();
        Init("");
        return testing::internal::GetCapturedStderr();
    }

    /// Plays, until something of it was heard; gives the channel.
    DWORD Play() const
    {
        const DWORD channel = OpenStream(WriteWav("a.wav", Noise(20UL * 2 * 44100)));
        EXPECT_TRUE(BASS_ChannelPlay(channel, 0));
        AwaitHeard(channel, 4 * 4410);
        return channel;
    }

    /// Waits until the server takes the sound, or doesn't any more.
    void AwaitStream(bool isThere, const char* form = "float32le")
    {
        EXPECT_TRUE(Until([&] {
            const std::string streams = m_server.Control("list short sink-inputs");
            return (streams.find(form) != std::string::npos) == isThere;
        }));
    }

    /// What plays in silence goes on where the server takes it.
    void ExpectSilenceUntil(const std::function<void()>& deviceAppears)
    {
        EXPECT_EQ(SaidByInit(),
                  "velmo: no sound device found; playing silently until one appears\n");
        const DWORD channel = Play();
        AwaitHeard(channel, QWORD{4} * 100'000); // one attempt in vain comes in between
        deviceAppears();
        AwaitStream(true);
        AwaitHeard(channel, Heard(channel) + QWORD{4} * 4410);
    }

    velmo::test::PulseServer m_server;
};

template<typename Action>
auto TimeOf(Action action)
{
    const auto start = std::chrono::steady_clock::now();
    action();
    return std::chrono::steady_clock::now() - start;
}

TEST_F(SystemOutput, PlaysToTheServerWithoutAWordStopsAndGoesOn)
{
    m_server.Start();
    EXPECT_EQ(SaidByInit(), "");
    const DWORD channel = Play();
    AwaitStream(true);
    ASSERT_TRUE(BASS_Stop());
    const QWORD stopped = AwaitStandstill(channel);
    ASSERT_TRUE(BASS_ChannelPlay(channel, 0));
    AwaitHeard(channel, stopped + 4 * 4410);
}

TEST_F(SystemOutput, TakesAllSpeakersWhereTheyAreWanted)
{
    m_server.Start();
    m_server.Control("load-module module-null-sink sink_name=six norewinds=1 channels=6");
    m_server.Control("set-default-sink six");
    for (const bool all : {true, false}) {
        Init("", 44100, all ? DWORD{BASS_DEVICE_SPEAKERS} : 0);
        BASS_INFO info = {};
        EXPECT_TRUE(BASS_GetInfo(&info));
        EXPECT_EQ(info.speakers, 6U);
        Play();
        AwaitStream(true, all ? "float32le 6ch" : "float32le 2ch");
        BASS_Free();
    }
}

TEST_F(SystemOutput, HungServerDoesNotHoldUpClose)
{
    m_server.Start();
    Init("");
    Play();
    m_server.Hang();
    EXPECT_LT(TimeOf([] { BASS_Free(); }), 30s); // the server hangs for ever
    m_server.Continue();
    AwaitStream(false);
}

TEST_F(SystemOutput, ServerThatHangsAtOpenIsReplacedBySilence)
{
    m_server.Start();
    m_server.Hang();
    std::string said;
    EXPECT_LT(TimeOf([&] { said = SaidByInit(); }), 30s);
    EXPECT_THAT(said, HasSubstr("does not answer"));
    const DWORD channel = Play();
    m_server.Continue();
    AwaitStream(true);
    AwaitHeard(channel, Heard(channel) + QWORD{4} * 4410);
}

TEST_F(SystemOutput, WithoutAServerItPlaysSilentlyUntilOneAppears)
{
    ExpectSilenceUntil([this] { m_server.Start(); });
}

TEST_F(SystemOutput, ServerWithoutASinkCountsAsNoDevice)
{
    m_server.Start();
    m_server.RemoveSink();
    ExpectSilenceUntil([this] { m_server.AddSink(); });
}

TEST_F(SystemOutput, OpenAndCloseInARow)
{
    m_server.Start();
    const std::string file = WriteWav("a.wav", Noise(2UL * 44100));
    for (int i = 0; i < 20; ++i) {
        Init("");
        const DWORD channel = OpenStream(file);
        ASSERT_TRUE(BASS_ChannelPlay(channel, 0));
        if (i % 2 == 0)
            AwaitHeard(channel, 1);
        BASS_Free();
    }
}

} // namespace
} // namespace velmo::engine::test
