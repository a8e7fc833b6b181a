// Many calls: what they leave behind, and from several threads at once.

#include "EngineTest.h"
#include "LineEffect.h"

#include <array>
#include <atomic>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <random>
#include <thread>
#include <vector>

#include <dlfcn.h>

namespace velmo::engine::test {

namespace {

class Endurance : public EngineTest
{};

std::ptrdiff_t Entries(const char* directory)
{
    return std::distance(std::filesystem::directory_iterator(directory), {});
}

/// KiB of memory in use.
long Resident()
{
    std::ifstream file("/proc/self/statm");
    long pages = 0;
    file >> pages >> pages;
    return pages * 4;
}

} // namespace

TEST_F(Endurance, OpensAndFreesLeaveNothingBehind)
{
    const std::string file = WriteWav("a.wav", Noise(2UL * 44100));
    Init("null");
    const auto round = [&](int i) {
        const DWORD channel = OpenStream(file, i % 2 == 0 ? BASS_STREAM_AUTOFREE : 0);
        if (i % 3 == 0)
            BASS_ChannelPlay(channel, 1);
        if (i % 6 == 0)
            BASS_ChannelSetPosition(channel, 1000, BASS_POS_BYTE);
        BASS_StreamFree(channel);
    };
    for (int i = 0; i < 100; ++i)
        round(i);
    const auto files = Entries("/proc/self/fd");
    const auto threads = Entries("/proc/self/task");
    const long memory = Resident();
    for (int i = 0; i < 1000; ++i)
        round(i);
    // The decoding thread lets go of the last ones a moment later.
    EXPECT_TRUE(Until([&] { return Entries("/proc/self/fd") <= files; }));
    EXPECT_LE(Entries("/proc/self/task"), threads);
    // 1500 voices of 170 KiB would be 250 MiB. Sanitizers hold freed memory back on purpose.
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
    EXPECT_LE(Resident() - memory, 30000);
#else
    static_cast<void>(memory);
#endif
}

TEST_F(Endurance, RandomCallsOfSeveralThreadsDoNoHarm)
{
    const std::string shortFile = WriteWav("short.wav", Noise(2UL * 2000));
    const std::string longFile = WriteWav("long.wav", Noise(2UL * 48000), 48000);
    BASS_RegisterEffect(&LineTable());
    std::array<std::atomic<DWORD>, 8> handles = {};
    std::array<std::atomic<HFX>, 8> effects = {};
    const auto step = [&](std::minstd_rand& random) {
        std::atomic<DWORD>& slot = handles[random() % handles.size()];
        const DWORD handle = slot.load();
        const DWORD flags = random() % 2 == 0 ? BASS_STREAM_AUTOFREE : 0;
        BASS_CHANNELINFO info = {};
        std::atomic<HFX>& effect = effects[random() % effects.size()];
        Line line = {static_cast<float>(random() % 3), 0};
        std::array<float, 1024> data = {};
        switch (random() % 20) {
        case 0:
        case 1:
            slot = BASS_StreamCreateFile(
                0, (random() % 2 == 0 ? shortFile : longFile).c_str(), 0, 0, flags);
            break;
        case 2: BASS_StreamFree(handle); break;
        case 3:
        case 4: BASS_ChannelPlay(handle, static_cast<BOOL>(random() % 2)); break;
        case 5: BASS_ChannelPause(handle); break;
        case 6: BASS_ChannelStop(handle); break;
        case 7: BASS_ChannelSetPosition(handle, random() % 200000, BASS_POS_BYTE); break;
        case 8: BASS_ChannelGetPosition(handle, BASS_POS_BYTE); break;
        case 9: BASS_ChannelIsActive(handle); break;
        case 10: BASS_ChannelGetInfo(handle, &info); break;
        case 11:
        case 12:
            effect = BASS_ChannelSetFX(handle, LineType, static_cast<int>(random() % 3));
            break;
        case 13: BASS_ChannelRemoveFX(handle, effect); break;
        case 14: BASS_FXSetParameters(effect, &line); break;
        case 15: BASS_FXGetParameters(effect, &line); break;
        case 16: BASS_ChannelGetData(handle, data.data(), BASS_DATA_FFT2048); break;
        case 17: BASS_ChannelGetData(handle, data.data(), 4096U | BASS_DATA_FLOAT); break;
        case 18: BASS_SetEAXParameters(-1, static_cast<float>(random() % 2), 0.1f, -1); break;
        default: BASS_SetVolume(static_cast<float>(random() % 100) / 100); break;
        }
    };
    for (const char* audio : {"null", "wav-fast:/dev/null"}) {
        Init(audio);
        std::array<std::thread, 3> threads;
        std::uint32_t seed = 1;
        for (std::thread& thread : threads)
            thread = std::thread([&step, random = std::minstd_rand(seed++)]() mutable {
                for (int i = 0; i < 4000; ++i) {
                    step(random);
                    if (i % 1000 == 999)
                        BASS_Stop();
                }
            });
        // Closing and opening come in between.
        for (int i = 0; i < 3; ++i) {
            BASS_Free();
            BASS_Init(-1, 44100, 0, nullptr, nullptr);
        }
        for (std::thread& thread : threads)
            thread.join();
        // And the engine plays as if nothing had been.
        PlayToEnd(OpenStream(shortFile, BASS_STREAM_AUTOFREE));
        EXPECT_TRUE(BASS_Free());
        EXPECT_EQ(LineEffects(), 0);
    }
}

TEST_F(Endurance, EffectsComeAndGoWhileTheSoundIsMixedAndLookedAt)
{
    BASS_RegisterEffect(&LineTable());
    InitFast();
    const std::string file = WriteWav("noise.wav", Noise(2UL * 441000));
    const DWORD channel = OpenStream(file);
    std::atomic<bool> mixing = true;
    std::thread looker([&] {
        std::array<float, 1024> data = {};
        while (mixing) {
            BASS_ChannelGetData(channel, data.data(), BASS_DATA_FFT2048);
            BASS_ChannelGetData(channel, data.data(), 4096U | BASS_DATA_FLOAT);
        }
    });
    for (int round = 0; round < 5; ++round) {
        ASSERT_TRUE(BASS_ChannelPlay(channel, 1));
        while (BASS_ChannelIsActive(channel) != BASS_ACTIVE_STOPPED) {
            const HFX effect = BASS_ChannelSetFX(channel, LineType, round);
            const Line silent = {0, 0};
            ASSERT_TRUE(BASS_FXSetParameters(effect, &silent));
            ASSERT_TRUE(BASS_ChannelRemoveFX(channel, effect));
        }
    }
    mixing = false;
    looker.join();
    EXPECT_EQ(BASS_ChannelGetClipCount(channel), 0U);
    EXPECT_EQ(Rendered().size(), 5U * 2 * 441000) << "nobody holds the sound up for good";
    EXPECT_EQ(LineEffects(), 0);
}

TEST_F(Endurance, BusyProcessorsLeaveNoGap)
{
    // At another rate, so that there is something to decode.
    const std::string file = WriteWav("a.wav", Noise(2UL * 12 * 48000), 48000);
    std::atomic<bool> done = false;
    std::vector<std::jthread> others;
    for (unsigned i = 0; i < std::thread::hardware_concurrency(); ++i)
        others.emplace_back([&] {
            while (!done) {}
        });
    Init("null");
    PlayToEnd(OpenStream(file));
    done = true;
    BASS_STATISTICS statistics = {};
    EXPECT_TRUE(BASS_GetStatistics(&statistics));
    EXPECT_EQ(statistics.underruns, 0U);
    EXPECT_GE(statistics.rendered, 12U * 44100);
}

TEST_F(Endurance, ProcessMayEndWhileAChannelPlays)
{
    const std::string file = WriteWav("a.wav", Noise(2UL * 441000));
    const std::string module = WriteModule("a.mod");
    SetVariable("VELMO_AUDIO", "null");
    const auto playAndExit = [&] {
        void* const library = dlopen(BASS_LIBRARY, RTLD_NOW | RTLD_LOCAL);
        if (library == nullptr)
            std::_Exit(1);
        const auto find = [library]<class Function>(Function*, const char* name) {
            return reinterpret_cast<Function*>(dlsym(library, name));
        };
        find(&BASS_Init, "BASS_Init")(-1, 44100, 0, nullptr, nullptr);
        const DWORD stream =
            find(&BASS_StreamCreateFile, "BASS_StreamCreateFile")(0, file.c_str(), 0, 0, 0);
        const DWORD music = find(&BASS_MusicLoad, "BASS_MusicLoad")(0, module.c_str(), 0, 0, 0, 0);
        const auto play = find(&BASS_ChannelPlay, "BASS_ChannelPlay");
        // NOLINTNEXTLINE(concurrency-mt-unsafe): the end of the process is what is tested
        std::exit(play(stream, 1) != 0 && play(music, 1) != 0 ? 0 : 2);
    };
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(playAndExit(), ::testing::ExitedWithCode(0), "");
}

} // namespace velmo::engine::test
