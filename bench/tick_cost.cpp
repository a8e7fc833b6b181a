// What the timers of a playing program cost, and how long its exit takes with a long list. Over the
// real engine on the null output, real files and a settings file of the usual size; no windows.

#include "ListOnDisk.h"
#include "Measure.h"

#include "lifecycle/ExitProgram.h"
#include "linux/DlLibraries.h"
#include "sound/Monitor.h"
#include "windows/TitleScroller.h"

#include <cstdio>
#include <cstdlib>

#include <unistd.h>

namespace velmo::bench {

namespace {

class NoInstance final : public ports::Instance
{
public:
    bool CreateInstanceMutex(const std::string&) override { return true; }
    void MarkMainWindow(ports::InstanceEvents) override {}
    std::optional<ports::RunningInstance> FindRunningInstance(
        std::chrono::steady_clock::time_point) override
    {
        return {};
    }
    bool IsWindowVisible(const ports::RunningInstance&,
                         std::chrono::steady_clock::time_point) override
    {
        return false;
    }
    bool Send(const ports::RunningInstance&,
              const ports::HandOverRecord&,
              std::chrono::steady_clock::time_point) override
    {
        return false;
    }
    bool ActivateWindow(const ports::RunningInstance&,
                        std::chrono::steady_clock::time_point) override
    {
        return false;
    }
    void ReleaseInstance() override {}
};

class NoApplication final : public ports::Application
{
public:
    std::string CommandLine() override { return {}; }
    std::string ProgramDirectory() override { return {}; }
    std::string ApplicationDirectory() override { return {}; }
    void Post(std::function<void()>) override {}
    void Quit(int) override {}
    bool IsQuitting() override { return false; }
};

/// The sounding half of the program, as the program puts it together.
struct PlayerOnDisk
{
    ListOnDisk disk;
    DlLibraries libraries;
    modBass table;
    BassLibrary library = OpenBass(libraries, BASS_LIBRARY, table);
    TagLibrary tagLibrary{libraries, TAG_LIBRARY};
    forms::wmain wmain;
    forms::fX fX;
    forms::ErrMGR errMGR;
    TransportState state;
    NoStatusChanger status;
    NoInstance instance;
    NoApplication application;
    modTags tags{table, tagLibrary, disk.files, disk.directory("")};
    modFXFunctions equalizer{table, fX};
    EqualizerFiles curves{
        fX, equalizer, disk.settings, disk.files, disk.dialogs, disk.directory("")};
    PluginTable plugins;
    MediaFilter mediaFilter{plugins};
    TrackForms trackForms{wmain, disk.playlist, errMGR};
    TrackListeners listeners{disk.list, status};
    modBassFunctions tracks{
        table, disk.settings, disk.files, tags, equalizer, state, trackForms, listeners};
    RandomRow randomRow{disk.random, disk.clock};
    DjMethods dj{table, disk.settings, state, trackForms, disk.list, tracks, randomRow};
    Transport transport{table,
                        disk.settings,
                        disk.files,
                        disk.dialogs,
                        state,
                        trackForms,
                        listeners,
                        mediaFilter,
                        tracks,
                        dj,
                        randomRow};
    Monitor monitor{table, disk.settings, state, trackForms, tracks, dj, transport};
    TitleScroller scroller{wmain, disk.settings, state};
    EndingSteps steps{
        {table,          disk.settings, state, wmain, disk.playlist, disk.list, status, curves, instance},
        {}
    };
};

void WriteUsualSettings(modINI& settings)
{
    for (int key = 0; key < 60; ++key)
        settings.WriteSetting("Options", "Key" + std::to_string(key), "a usual value");
    settings.WriteSetting("DJ", "CrossFade", "True");
    settings.WriteSetting("DJ", "CrossFadeDelay", "-5");
    settings.WriteSetting("Display", "ScrollTitle", "True");
}

void MeasureTicks(const std::string& file)
{
    PlayerOnDisk player;
    constexpr DWORD Rate = 44100;
    if (player.library.library == nullptr
        || player.table.BASS_Init(-1, Rate, BASS_DEVICE_LATENCY, nullptr, nullptr) == 0) {
        std::fprintf(stderr, "no engine\n");
        std::exit(1);
    }
    WriteUsualSettings(player.disk.settings);
    player.tracks.PlayTrack(file);
    const auto perTick = [](const std::function<void()>& tick) {
        constexpr int Ticks = 2000;
        std::vector<double> rounds;
        for (int round = 0; round < 9; ++round)
            rounds.push_back(Seconds([&] {
                for (int i = 0; i < Ticks; ++i)
                    tick();
            }));
        return Median(rounds) / Ticks * 1e6;
    };
    constexpr double MaxMicroseconds = 20;
    const double monitor = perTick([&] { player.monitor.MonitorTick(); });
    Row("monitor tick", Text("%.1f us", monitor), "< 20 us", monitor < MaxMicroseconds);
    const double scroller = perTick([&] { player.scroller.tmrScroll_Timer(); });
    Row("title scroller tick", Text("%.1f us", scroller), "< 20 us", scroller < MaxMicroseconds);
    if (!player.wmain.tmrBASS.Enabled || player.state.CurrentChannel == 0) {
        std::fprintf(stderr, "nothing played\n");
        std::exit(1);
    }
    player.table.BASS_Free();
}

double WriteAndSync(const std::string& path, const std::string& bytes)
{
    return Seconds([&] {
        std::FILE* const file = std::fopen(path.c_str(), "wb");
        std::fwrite(bytes.data(), 1, bytes.size(), file);
        std::fflush(file);
        ::fsync(::fileno(file));
        std::fclose(file);
    });
}

void MeasureExit()
{
    PlayerOnDisk player;
    player.table = {}; // the engine's own end is measured elsewhere
    player.wmain.Loaded = true;
    constexpr int Rows = 100'000;
    for (int row = 1; row <= Rows; ++row)
        player.disk.playlist.pl.Add({.Text = std::to_string(row) + ". Artist - A usual title",
                                     .Length = "04:33",
                                     .Path = "/home/user/Music/Artist/Album/" + std::to_string(row)
                                             + " A usual title.mp3"});
    const auto exit = [&] {
        return Seconds(
            [&] { ExitProgram(player.steps, {&player.wmain}, player.application).Run(); });
    };
    exit();
    const std::string saved =
        player.disk.files.Read(player.disk.directory("list.zvl")).value_or("");
    const Pair pair =
        InTurns(9, exit, [&] { return WriteAndSync(player.disk.directory("bare"), saved); });
    constexpr double MaxRatio = 3;
    const double ratio = pair.ours / pair.yardstick;
    Row("exit with 100,000 rows, of writing and syncing the same bytes",
        Text("%.2fx", ratio),
        "< 3x",
        ratio < MaxRatio && saved.size() > Rows);
}

} // namespace

} // namespace velmo::bench

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: tick_cost FILES\n");
        return 1;
    }
    const velmo::bench::OwnDirectory home;
    ::setenv("VELMO_HOME", home("").c_str(), 1); // NOLINT(concurrency-mt-unsafe)
    ::setenv("VELMO_AUDIO", "null", 1);          // NOLINT(concurrency-mt-unsafe)
    velmo::bench::MeasureTicks(std::string(argv[1]) + "/long.mp3");
    velmo::bench::MeasureExit();
}
