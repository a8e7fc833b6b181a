// What happens to a real sound server while a channel plays: the sound goes on by itself, from
// where it was, and no call waits for the server.

#include "EngineTest.h"

#include "engine/device/PulseServer.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <thread>

namespace velmo::engine::test {

namespace {

using namespace std::chrono_literals;
using std::chrono::nanoseconds;
using std::chrono::steady_clock;

constexpr std::chrono::milliseconds ShortAbsence = 1s; ///< of the server or its sink
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
// Locks are held for several times as long. What waits for the server takes at least the time for
// which it's away, and so far a position is wrong that runs on meanwhile.
constexpr nanoseconds CallLimit = ShortAbsence / 2;
constexpr nanoseconds PositionLimit = ShortAbsence / 2;
#else
constexpr nanoseconds CallLimit = 20ms;
constexpr nanoseconds PositionLimit = 250ms;
#endif
constexpr QWORD Second = QWORD{44100} * 4; ///< of the files' sound, in bytes

/// What a thread has seen that calls what a user interface calls, all the time.
struct Seen
{
    nanoseconds longest{0}; ///< call: its processor time and the time for which it was blocked
    const char* name = "";  ///< of that call
    nanoseconds ahead{0};   ///< how far the position has run ahead of the time at the most
    nanoseconds behind{0};  ///< or fallen behind it
    int stepsBack = 0;      ///< of the position
};

/// Time that the calling thread was ready and had no processor: the machine's doing, not that of
/// what is called.
nanoseconds ReadyTime()
{
    std::ifstream file("/proc/thread-self/schedstat");
    long long running = 0;
    long long ready = 0;
    file >> running >> ready;
    return nanoseconds(ready);
}

/// Calls, and measures each call, until it's to stop. The channel `watched` is only asked.
void KeepCalling(const std::stop_token& stop,
                 DWORD watched,
                 DWORD played,
                 const std::string& shortFile,
                 Seen& seen)
{
    const auto measure = [&](const char* name, auto call) {
        const nanoseconds readyBefore = ReadyTime();
        const auto start = steady_clock::now();
        const auto result = call();
        const nanoseconds took = steady_clock::now() - start;
        const nanoseconds blocked = took - (ReadyTime() - readyBefore);
        if (blocked > seen.longest) {
            seen.longest = blocked;
            seen.name = name;
        }
        return result;
    };
    nanoseconds last{0};
    nanoseconds earliest = nanoseconds::max();
    nanoseconds latest = nanoseconds::min();
    while (!stop.stop_requested()) {
        const auto before = steady_clock::now().time_since_epoch();
        const QWORD bytes = measure("GetPosition", [=] { return Heard(watched); });
        const auto after = steady_clock::now().time_since_epoch();
        const nanoseconds position(bytes * 1'000'000'000 / Second);
        seen.stepsBack += position < last;
        last = position;
        // The position is that of a moment between the two.
        earliest = std::min(earliest, position - before);
        latest = std::max(latest, position - after);
        seen.ahead = std::max(seen.ahead, position - after - earliest);
        seen.behind = std::max(seen.behind, latest - (position - before));

        measure("IsActive", [=] { return BASS_ChannelIsActive(watched); });
        measure("Pause", [=] { return BASS_ChannelPause(played); });
        measure("SetPosition", [=] { return BASS_ChannelSetPosition(played, 4000, 0); });
        measure("Play", [=] { return BASS_ChannelPlay(played, 0); });
        measure("SetVolume", [] { return BASS_SetVolume(0.5f); });
        BASS_INFO info = {};
        measure("GetInfo", [&] { return BASS_GetInfo(&info); });
        BASS_DEVICEINFO device = {};
        measure("GetDeviceInfo", [&] { return BASS_GetDeviceInfo(1, &device); });
        measure("GetCPU", [] { return BASS_GetCPU(); });
        const DWORD channel = measure("StreamCreateFile", [&] {
            return BASS_StreamCreateFile(0, shortFile.c_str(), 0, 0, 0);
        });
        measure("StreamFree", [=] { return BASS_StreamFree(channel); });
        std::this_thread::sleep_for(1ms); // a user interface isn't busy either
    }
}

/// How often the engine's threads went to sleep so far, and so woke up: those that have a name of
/// their own. This one and a sanitizer's have the program's.
QWORD Sleeps()
{
    QWORD sleeps = 0;
    for (const auto& task : std::filesystem::directory_iterator("/proc/self/task")) {
        std::ifstream status(task.path() / "status");
        std::string name;
        status >> name >> name; // "Name:" and the name
        for (std::string word; !name.starts_with("test_") && status >> word;)
            if (word == "voluntary_ctxt_switches:" && status >> word)
                sleeps += std::stoul(word);
    }
    return sleeps;
}

class Survival : public EngineTest
{
protected:
    Survival() { m_server.Start(); }

    /// Opens the server as the device, and plays a long file for half a second.
    DWORD PlayLong() const
    {
        Init("");
        const DWORD channel = OpenStream(WriteWav("long.wav", Noise(40UL * 2 * 44100)));
        EXPECT_TRUE(BASS_ChannelPlay(channel, 0));
        AwaitHeard(channel, Second / 2);
        return channel;
    }

    /// Without `mend` the server sees to it that the sound goes on.
    void ExpectGoesOn(const std::function<void()>& strike,
                      std::chrono::milliseconds lasts = 0ms,
                      const std::function<void()>& mend = {})
    {
        const DWORD watched = PlayLong();
        const DWORD played = OpenStream(File("long.wav"));
        const std::string shortFile = WriteWav("short.wav", Noise(8192));
        Seen seen;
        std::jthread caller(KeepCalling, watched, played, shortFile, std::ref(seen));
        AwaitHeard(watched, Second); // some calls before the event
        strike();
        std::this_thread::sleep_for(lasts); // how long it lasts is the case, not a condition
        const QWORD mended = Heard(watched);
        if (mend)
            mend();
        AwaitHeard(watched, mended + 2 * Second);
        caller = {};
        EXPECT_LT(seen.longest, CallLimit) << seen.name;
        EXPECT_LT(seen.ahead, PositionLimit);
        EXPECT_TRUE(mend || seen.behind < PositionLimit);
        EXPECT_EQ(seen.stepsBack, 0);
        EXPECT_TRUE(Until([this] {
            return m_server.Control("list short sink-inputs").find("float32le")
                   != std::string::npos;
        }));
    }

    void AddSecondSink()
    {
        m_server.Control("load-module module-null-sink sink_name=second norewinds=1");
    }

    velmo::test::PulseServer m_server;
};

} // namespace

TEST_F(Survival, OfTheSinkInUseThatGoesWithAnotherThere)
{
    ExpectGoesOn([this] {
        AddSecondSink();
        const std::string modules = m_server.Control("list short modules");
        m_server.Control("unload-module " + modules.substr(0, modules.find('\t')));
    });
}

TEST_F(Survival, OfAnotherDefaultSink)
{
    ExpectGoesOn([this] {
        AddSecondSink();
        m_server.Control("set-default-sink second");
    });
}

TEST_F(Survival, OfTheLastSinkThatGoesAndComesBack)
{
    ExpectGoesOn([this] { m_server.RemoveSink(); }, ShortAbsence, [this] { m_server.AddSink(); });
}

TEST_F(Survival, OfAServerThatIsEndedAndStarted)
{
    ExpectGoesOn([this] { m_server.Kill(); }, ShortAbsence, [this] { m_server.Start(); });
}

TEST_F(Survival, OfAServerThatHangsForTenSeconds)
{
    ExpectGoesOn([this] { m_server.Hang(); }, 10s, [this] { m_server.Continue(); });
}

TEST_F(Survival, EngineWithoutItsDeviceTriesNowAndThenAndComesToRestWithThePause)
{
    const DWORD channel = PlayLong();
    m_server.Kill();
    const QWORD lost = Sleeps();
    EXPECT_FALSE(Until([=] { return Sleeps() > lost + 400; }, 2s)) << "tries without a rest";
    ASSERT_TRUE(BASS_ChannelPause(channel));
    EXPECT_TRUE(Until([] {
        const QWORD sleeps = Sleeps();
        return !Until([=] { return Sleeps() != sleeps; }, 1s);
    })) << "some thread wakes up all the time";
    const QWORD paused = Heard(channel);
    m_server.Start();
    ASSERT_TRUE(BASS_ChannelPlay(channel, 0));
    AwaitHeard(channel, paused + Second);
}

} // namespace velmo::engine::test
