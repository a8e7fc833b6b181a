// What happens to a real sound server while a channel plays: the sound goes on by itself, from
// where it was, and no call waits for the server.

#include "EngineTest.h"

#include "engine/device/PulseServer.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdlib>
#include <fstream>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace velmo::engine::test {

namespace {

using velmo::test::PulseServer;
using namespace std::chrono_literals;
using std::chrono::nanoseconds;
using std::chrono::steady_clock;

constexpr nanoseconds CallLimit = 20ms;
constexpr nanoseconds PositionLimit = 250ms;
constexpr DWORD Rate = 44100;

/// Time that the calling thread was ready and had no processor: the machine's doing, not that of
/// what is called.
class ReadyTime
{
public:
    ReadyTime()
        : m_file(open("/proc/thread-self/schedstat", O_RDONLY | O_CLOEXEC))
    {}
    ~ReadyTime() { close(m_file); }
    ReadyTime(const ReadyTime&) = delete;
    ReadyTime& operator=(const ReadyTime&) = delete;

    /// Since the thread began.
    nanoseconds Get() const
    {
        std::array<char, 96> text{};
        if (pread(m_file, text.data(), text.size() - 1, 0) <= 0)
            return {};
        char* rest = nullptr;
        static_cast<void>(std::strtoll(text.data(), &rest, 10)); // what it was running
        return nanoseconds(std::strtoll(rest, nullptr, 10));
    }

private:
    int m_file;
};

/// A thread that calls what a user interface calls, all the time, and watches one channel that it
/// only asks. Every call is measured: its processor time and the time for which it was blocked.
class Caller
{
public:
    Caller(DWORD watched, DWORD played, std::string shortFile)
        : m_watched(watched)
        , m_played(played)
        , m_shortFile(std::move(shortFile))
        , m_thread([this] { Loop(); })
    {}
    ~Caller() { Stop(); }
    Caller(const Caller&) = delete;
    Caller& operator=(const Caller&) = delete;

    void Stop()
    {
        m_quit = true;
        if (m_thread.joinable())
            m_thread.join();
    }

    // After Stop:
    nanoseconds Longest() const { return m_longest; }
    const char* LongestName() const { return m_longestName; }
    /// How far the position has run ahead of the time, or fallen behind it, at the most.
    nanoseconds Ahead() const { return m_ahead; }
    nanoseconds Behind() const { return m_behind; }
    int StepsBack() const { return m_stepsBack; }

private:
    template<class Call>
    auto Measure(const char* name, Call call)
    {
        const nanoseconds ready = m_ready->Get();
        const auto start = steady_clock::now();
        const auto result = call();
        const nanoseconds took = steady_clock::now() - start - (m_ready->Get() - ready);
        if (took > m_longest) {
            m_longest = took;
            m_longestName = name;
        }
        return result;
    }

    void Loop()
    {
        const ReadyTime ready;
        m_ready = &ready;
        for (unsigned round = 0; !m_quit; ++round) {
            Watch();
            Measure("IsActive", [this] { return BASS_ChannelIsActive(m_watched); });
            Measure("Pause", [this] { return BASS_ChannelPause(m_played); });
            Measure("SetPosition", [this] { return BASS_ChannelSetPosition(m_played, 4000, 0); });
            Measure("Play", [this] { return BASS_ChannelPlay(m_played, 0); });
            const float volume = round % 2 == 0 ? 0.5f : 0.25f;
            Measure("SetVolume", [=] { return BASS_SetVolume(volume); });
            BASS_INFO info = {};
            Measure("GetInfo", [&] { return BASS_GetInfo(&info); });
            BASS_DEVICEINFO device = {};
            Measure("GetDeviceInfo", [&] { return BASS_GetDeviceInfo(1, &device); });
            Measure("GetCPU", [] { return BASS_GetCPU(); });
            const DWORD channel = Measure("StreamCreateFile", [this] {
                return BASS_StreamCreateFile(0, m_shortFile.c_str(), 0, 0, 0);
            });
            Measure("StreamFree", [=] { return BASS_StreamFree(channel); });
            std::this_thread::sleep_for(1ms); // a user interface isn't busy either
        }
    }

    void Watch()
    {
        const auto before = steady_clock::now();
        const QWORD bytes = Measure(
            "GetPosition", [this] { return BASS_ChannelGetPosition(m_watched, BASS_POS_BYTE); });
        const auto after = steady_clock::now();
        const nanoseconds position(bytes / 4 * 1'000'000'000 / Rate);
        m_stepsBack += position < m_position;
        m_position = position;
        // The position is that of a moment between the two.
        const nanoseconds early = position - after.time_since_epoch();
        const nanoseconds late = position - before.time_since_epoch();
        m_earliest = std::min(m_earliest, late);
        m_latest = std::max(m_latest, early);
        m_ahead = std::max(m_ahead, early - m_earliest);
        m_behind = std::max(m_behind, m_latest - late);
    }

    const DWORD m_watched;
    const DWORD m_played;
    const std::string m_shortFile;
    std::atomic<bool> m_quit{false};
    const ReadyTime* m_ready = nullptr;
    nanoseconds m_longest{0};
    const char* m_longestName = "";
    nanoseconds m_position{0};
    nanoseconds m_earliest = nanoseconds::max();
    nanoseconds m_latest = nanoseconds::min();
    nanoseconds m_ahead{0};
    nanoseconds m_behind{0};
    int m_stepsBack = 0;
    std::thread m_thread;
};

struct Event
{
    const char* name;
    void (*strike)(PulseServer& server);
    std::chrono::milliseconds lasts;
    void (*mend)(PulseServer& server); ///< null: the server sees to it that the sound goes on
};

void AddSecondSink(PulseServer& server)
{
    server.Control("load-module module-null-sink sink_name=second norewinds=1");
}

constexpr std::array Events = {
    Event{.name = "SinkInUseGoesAndAnotherIsThere",
          .strike =
              [](PulseServer& server) {
                  AddSecondSink(server);
                  const std::string modules = server.Control("list short modules");
                  server.Control("unload-module " + modules.substr(0, modules.find('\t')));
              },                                                      .lasts = 0ms,
          .mend = nullptr                                       },
    Event{.name = "LastSinkGoesAndOneComesBack",
          .strike = [](PulseServer& server) { server.RemoveSink(); },
          .lasts = 1s,
          .mend = [](PulseServer& server) { server.AddSink(); } },
    Event{.name = "ServerIsEndedAndStarted",
          .strike = [](PulseServer& server) { server.Kill(); },
          .lasts = 1s,
          .mend = [](PulseServer& server) { server.Start(); }   },
    Event{.name = "ServerHangsForTenSeconds",
          .strike = [](PulseServer& server) { server.Hang(); },
          .lasts = 10s,
          .mend = [](PulseServer& server) { server.Continue(); }},
    Event{.name = "DefaultSinkChanges",
          .strike =
              [](PulseServer& server) {
                  AddSecondSink(server);
                  server.Control("set-default-sink second");
              },                                                      .lasts = 0ms,
          .mend = nullptr                                       },
};

/// How often the engine's threads went to sleep so far, and so woke up: those that have a name of
/// their own. This one and a sanitizer's have the program's.
long Sleeps()
{
    long sleeps = 0;
    for (const auto& task : std::filesystem::directory_iterator("/proc/self/task")) {
        std::ifstream status(task.path() / "status");
        std::string name;
        status >> name >> name; // "Name:" and the name
        for (std::string word; !name.starts_with("test_") && status >> word;)
            if (word == "voluntary_ctxt_switches:" && status >> word)
                sleeps += std::stol(word);
    }
    return sleeps;
}

class Survival : public EngineTest
{};

class SurvivalOf
    : public Survival
    , public ::testing::WithParamInterface<Event>
{};

} // namespace

TEST_P(SurvivalOf, SoundGoesOnFromWhereItWasAndNoCallWaits)
{
    const Event& event = GetParam();
    const std::string longFile = WriteWav("long.wav", Noise(40UL * 2 * Rate));
    const std::string shortFile = WriteWav("short.wav", Noise(8192));
    PulseServer server;
    server.Start();
    Init("");
    const DWORD watched = OpenStream(longFile);
    const DWORD played = OpenStream(longFile);
    const auto position = [=] { return BASS_ChannelGetPosition(watched, BASS_POS_BYTE) / 4; };
    ASSERT_TRUE(BASS_ChannelPlay(watched, 0));
    ASSERT_TRUE(Until([&] { return position() > Rate / 2; }));

    Caller caller(watched, played, shortFile);
    ASSERT_TRUE(Until([&] { return position() > Rate; })); // some calls before the event
    event.strike(server);
    std::this_thread::sleep_for(event.lasts); // how long it lasts is the case, not a condition
    const QWORD mended = position();
    if (event.mend != nullptr)
        event.mend(server);
    const bool goesOn = Until([&] { return position() > mended + std::uint64_t{2} * Rate; });
    caller.Stop();
    EXPECT_TRUE(goesOn);
    EXPECT_LT(caller.Longest(), CallLimit) << caller.LongestName();
    EXPECT_LT(caller.Ahead(), PositionLimit);
    if (event.mend == nullptr) {
        EXPECT_LT(caller.Behind(), PositionLimit);
    }
    EXPECT_EQ(caller.StepsBack(), 0);
    EXPECT_NE(server.Control("list short sink-inputs").find("float32le"), std::string::npos);
}

TEST_F(Survival, EngineWithoutItsDeviceComesToRestWithThePause)
{
    PulseServer server;
    server.Start();
    Init("");
    const DWORD channel = OpenStream(WriteWav("long.wav", Noise(40UL * 2 * Rate)));
    const auto position = [=] { return BASS_ChannelGetPosition(channel, BASS_POS_BYTE) / 4; };
    ASSERT_TRUE(BASS_ChannelPlay(channel, 0));
    ASSERT_TRUE(Until([&] { return position() > Rate / 2; }));
    server.Kill();
    ASSERT_TRUE(BASS_ChannelPause(channel));
    EXPECT_TRUE(Until([] {
        const long sleeps = Sleeps();
        return !Until([=] { return Sleeps() != sleeps; }, 1s);
    })) << "some thread wakes up all the time";
    const QWORD paused = position();
    server.Start();
    ASSERT_TRUE(BASS_ChannelPlay(channel, 0));
    EXPECT_TRUE(Until([&] { return position() > paused + Rate; }));
}

INSTANTIATE_TEST_SUITE_P(Events, SurvivalOf, ::testing::ValuesIn(Events), [](const auto& each) {
    return std::string(each.param.name);
});

} // namespace velmo::engine::test
