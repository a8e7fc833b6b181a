// The engine's figures: engine_speed DIRECTORY_OF_LIBBASS DIRECTORY_OF_FILES
// The files are long.mp3, long.ogg, long.wav and long.mod, of ten minutes or so, as
// bench/make_files.py makes them.

#include "BareDecode.h"
#include "EngineTable.h"
#include "Measure.h"

#include <cmath>
#include <fstream>
#include <limits>
#include <thread>

#include <sys/resource.h>

namespace velmo::bench {

namespace {

constexpr DWORD DeviceRate = 44100;
constexpr double Always = 1e9;

double ProcessorSeconds()
{
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

void Wait(std::chrono::microseconds time)
{
    std::this_thread::sleep_for(time);
}

DWORD Open(const EngineTable& engine, const std::string& path)
{
    const DWORD stream = engine.StreamCreateFile(0, path.c_str(), 0, 0, 0);
    return stream != 0 ? stream : engine.MusicLoad(0, path.c_str(), 0, 0, 0, 0);
}

/// Seconds from the opening of the file to its end as rendered.
double RenderWhole(const EngineTable& engine, const std::string& path)
{
    return Seconds([&] {
        const DWORD channel = Open(engine, path);
        engine.ChannelPlay(channel, 1);
        while (engine.ChannelIsActive(channel) != 0)
            Wait(std::chrono::milliseconds(1)); // seldom: both processors have work
        engine.StreamFree(channel);
    });
}

void MeasureThroughput(const EngineTable& engine, const std::string& files)
{
    setenv("VELMO_AUDIO", "wav-fast:/dev/null", 1);
    engine.Init(-1, DeviceRate, 0, nullptr, nullptr);
    for (const char* name : {"long.mp3", "long.ogg", "long.wav", "long.mod"}) {
        const std::string path = files + "/" + name;
        const Pair pair = InTurns(
            5,
            [&] { return RenderWhole(engine, path); },
            [&] { return Seconds([&] { BareDecode(path, Always); }); });
        const double speed = pair.yardstick / pair.ours;
        Row("decode and mix " + std::string(name) + " against the bare library",
            Text("%.2f of its speed", speed),
            "0.85",
            speed >= 0.85);
    }
    engine.Free();
}

/// Processor time of the whole process while the null output plays that many seconds.
double PlayedProcessorSeconds(const EngineTable& engine, const std::string& path, double seconds)
{
    const DWORD channel = Open(engine, path);
    const double before = ProcessorSeconds();
    engine.ChannelPlay(channel, 1);
    Wait(std::chrono::microseconds(static_cast<std::int64_t>(seconds * 1e6)));
    const double used = ProcessorSeconds() - before;
    engine.StreamFree(channel);
    return used;
}

/// Bytes of memory in use that belong to no file.
double AnonymousBytes()
{
    std::ifstream status("/proc/self/status");
    std::string word;
    while (status >> word && word != "RssAnon:") {}
    double kibibytes = 0;
    status >> kibibytes;
    return kibibytes * 1024;
}

/// The bare library goes first, so that what a decoder takes is in use before and after.
void MeasureMemory(const EngineTable& engine, const std::string& files)
{
    const std::string path = files + "/long.mp3";
    BareDecode(path, 10);
    const double before = AnonymousBytes();
    setenv("VELMO_AUDIO", "null", 1);
    engine.SetConfig(0, 500);
    engine.Init(-1, DeviceRate, 0, nullptr, nullptr);
    const DWORD channel = Open(engine, path);
    engine.ChannelPlay(channel, 1);
    Wait(std::chrono::seconds(3));
    const double mebibytes = (AnonymousBytes() - before) / 1048576;
    engine.StreamFree(channel);
    engine.Free();
    Row("memory of the engine with one channel playing, beyond the decoder's, 500 ms buffer",
        Text("%.2f MiB", mebibytes),
        "4 MiB",
        mebibytes < 4);
}

void MeasureNullOutput(const EngineTable& engine, const std::string& files)
{
    constexpr double Played = 20;
    const std::string path = files + "/long.mp3";
    setenv("VELMO_AUDIO", "null", 1);
    engine.SetConfig(0, 500);
    engine.Init(-1, DeviceRate, 0, nullptr, nullptr);

    std::vector<double> delays;
    for (int round = 0; round < 15; ++round) {
        const DWORD channel = Open(engine, path);
        delays.push_back(Seconds([&] {
            engine.ChannelPlay(channel, 1);
            while (engine.ChannelGetPosition(channel, 0) == 0)
                std::this_thread::yield();
        }));
        engine.StreamFree(channel);
    }
    const double delayMs = Median(delays) * 1000;
    Row("from BASS_ChannelPlay to the first frame, 500 ms buffer",
        Text("%.2f ms", delayMs),
        "15 ms",
        delayMs < 15);

    const Pair pair = InTurns(
        3,
        [&] { return PlayedProcessorSeconds(engine, path, Played); },
        [&] {
            const double before = ProcessorSeconds();
            BareDecode(path, Played);
            return ProcessorSeconds() - before;
        });
    const double allowed = 1.3 * pair.yardstick + 0.001 * Played;
    Row("processor time of playing an MP3 through the null output",
        Text("%.3f %% of a core", pair.ours / Played * 100)
            + Text(" (bare decode %.3f %%)", pair.yardstick / Played * 100),
        Text("1.3 x bare + 0.1 %% = %.3f %%", allowed / Played * 100),
        pair.ours <= allowed);
    engine.Free();
}

} // namespace

} // namespace velmo::bench

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::fprintf(stderr, "engine_speed DIRECTORY_OF_LIBBASS DIRECTORY_OF_FILES\n");
        return 2;
    }
    const auto engine = velmo::bench::LoadEngine(argv[1]);
    velmo::bench::MeasureMemory(engine, argv[2]);
    velmo::bench::MeasureThroughput(engine, argv[2]);
    velmo::bench::MeasureNullOutput(engine, argv[2]);
    return 0;
}
