// Plays a file through the output that the environment names, and counts what failed on the way:
// hold DIRECTORY_OF_LIBBASS FILE SECONDS

#include "EngineTable.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <thread>

namespace {

using namespace velmo::bench;

/// Starts the file again at its end. A moment of nothing between the two is no fault.
void PlayFor(const EngineTable& engine, DWORD channel, std::chrono::seconds time)
{
    const auto end = std::chrono::steady_clock::now() + time;
    while (std::chrono::steady_clock::now() < end) {
        if (engine.ChannelIsActive(channel) == BASS_ACTIVE_STOPPED)
            engine.ChannelPlay(channel, 1);
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
    }
}

} // namespace

int main(int count, char** arguments)
{
    if (count != 4) {
        std::fprintf(stderr, "hold DIRECTORY_OF_LIBBASS FILE SECONDS\n");
        return 2;
    }
    const EngineTable engine = LoadEngine(arguments[1]);
    if (engine.Init(-1, 44100, 0, nullptr, nullptr) == 0) {
        std::fprintf(stderr, "the output can't be opened\n");
        return 1;
    }
    const DWORD channel = engine.StreamCreateFile(0, arguments[2], 0, 0, 0);
    engine.ChannelPlay(channel, 0);
    PlayFor(engine, channel, std::chrono::seconds(std::atoi(arguments[3])));
    BASS_STATISTICS statistics = {};
    BASS_DEVICEINFO device = {};
    engine.GetStatistics(&statistics);
    engine.GetDeviceInfo(1, &device);
    std::printf("%s: %.1f s played, %llu underruns\n",
                device.driver,
                static_cast<double>(statistics.rendered) / 44100,
                static_cast<unsigned long long>(statistics.underruns));
    engine.Free();
    return statistics.underruns == 0 ? 0 : 1;
}
