// Many calls: what they leave behind, and from several threads at once.

#include "EngineTest.h"
#include "LineEffect.h"

#include <array>
#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <thread>

namespace velmo::engine::test {

namespace {

using Endurance = EngineTest;

std::ptrdiff_t Entries(const char* directory)
{
    return std::distance(std::filesystem::directory_iterator(directory), {});
}

/// KiB of memory in use. Sanitizers hold freed memory back on purpose: 0.
long Resident()
{
    long pages = 0;
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
    std::ifstream file("/proc/self/statm");
    file >> pages >> pages;
#endif
    return pages * 4;
}

} // namespace

TEST_F(Endurance, OpensAndFreesLeaveNothingBehind)
{
    const std::string file = WriteWav("a.wav", Noise(2UL * 44100));
    Init("null");
    const auto rounds = [&](int count) {
        for (int i = 0; i < count; ++i) {
            const DWORD channel = OpenStream(file, i % 2 == 0 ? BASS_STREAM_AUTOFREE : 0);
            if (i % 3 == 0)
                BASS_ChannelPlay(channel, 1);
            if (i % 6 == 0)
                BASS_ChannelSetPosition(channel, 1000, BASS_POS_BYTE);
            BASS_StreamFree(channel);
        }
    };
    rounds(100);
    const auto files = Entries("/proc/self/fd");
    const auto threads = Entries("/proc/self/task");
    const long memory = Resident();
    rounds(1000);
    // The decoding thread lets go of the last ones a moment later.
    EXPECT_TRUE(Until([&] { return Entries("/proc/self/fd") <= files; }));
    EXPECT_LE(Entries("/proc/self/task"), threads);
    EXPECT_LE(Resident() - memory, 30000) << "1500 voices of 170 KiB would be 250 MiB";
}

TEST_F(Endurance, RandomCallsOfSeveralThreadsDoNoHarm)
{
    const std::string shortFile = WriteWav("short.wav", Noise(2UL * 2000));
    const std::string longFile = WriteWav("long.wav", Noise(2UL * 48000), 48000);
    BASS_RegisterEffect(&LineTable);
    std::array<std::atomic<DWORD>, 8> handles = {};
    std::array<std::atomic<HFX>, 8> effects = {};
    const auto step = [&](std::minstd_rand& random) {
        std::atomic<DWORD>& slot = handles[random() % handles.size()];
        std::atomic<HFX>& effect = effects[random() % effects.size()];
        const DWORD handle = slot.load();
        const int number = static_cast<int>(random() % 3);
        BASS_CHANNELINFO info = {};
        Line line = {static_cast<float>(number), 0};
        std::array<float, 1024> data = {};
        switch (random() % 19) {
        case 0:
        case 1: {
            const std::string& file = number == 0 ? shortFile : longFile;
            const DWORD flags = random() % 2 == 0 ? BASS_STREAM_AUTOFREE : 0;
            slot = BASS_StreamCreateFile(0, file.c_str(), 0, 0, flags);
            break;
        }
        case 2: BASS_StreamFree(handle); break;
        case 3:
        case 4: BASS_ChannelPlay(handle, number); break;
        case 5: BASS_ChannelPause(handle); break;
        case 6: BASS_ChannelStop(handle); break;
        case 7: BASS_ChannelSetPosition(handle, random() % 200000, BASS_POS_BYTE); break;
        case 8: Heard(handle); break;
        case 9: BASS_ChannelIsActive(handle); break;
        case 10: BASS_ChannelGetInfo(handle, &info); break;
        case 11:
        case 12: effect = BASS_ChannelSetFX(handle, LineType, number); break;
        case 13: BASS_ChannelRemoveFX(handle, effect); break;
        case 14: BASS_FXSetParameters(effect, &line); break;
        case 15: BASS_ChannelGetData(handle, data.data(), BASS_DATA_FFT2048); break;
        case 16: BASS_ChannelGetData(handle, data.data(), 4096U | BASS_DATA_FLOAT); break;
        case 17: BASS_SetEAXParameters(-1, static_cast<float>(number), 0.1f, -1); break;
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
        EXPECT_EQ(lineEffects, 0);
    }
}

TEST_F(Endurance, BusyProcessorsLeaveNoGap)
{
    // At another rate, so that there is something to decode.
    const std::string file = WriteWav("a.wav", Noise(2UL * 5 * 48000), 48000);
    std::vector<std::jthread> others;
    for (unsigned i = 0; i < std::thread::hardware_concurrency(); ++i)
        others.emplace_back([](const std::stop_token& stop) {
            while (!stop.stop_requested()) {}
        });
    Init("null");
    PlayToEnd(OpenStream(file));
    others.clear();
    EXPECT_EQ(Statistics().underruns, 0U);
    EXPECT_GE(Statistics().rendered, 5U * 44100);
}

TEST_F(Endurance, ProcessMayEndWhileAChannelPlays)
{
    const std::string file = WriteWav("a.wav", Noise(2UL * 441000));
    const std::string module = WriteModule("a.mod");
    SetVariable("VELMO_AUDIO", "null");
    const auto playAndExit = [&] {
        BASS_Init(-1, 44100, 0, nullptr, nullptr);
        const bool plays =
            BASS_ChannelPlay(OpenStream(file), 1) != 0
            && BASS_ChannelPlay(BASS_MusicLoad(0, module.c_str(), 0, 0, 0, 0), 1) != 0;
        std::exit(plays ? 0 : 2);
    };
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(playAndExit(), ::testing::ExitedWithCode(0), "");
}

} // namespace velmo::engine::test
