// What one frame of the live picture costs: picture_cost PROGRAM_DIRECTORY MUSIC_FILE
//
// The file plays into the null output. A frame is the spectrum of what is heard, the bars drawn
// from it, and their colours in the box that the window shows. Frames are paced, so that each finds
// other sound, and caches that others have used. What the screen costs is in program_cost.

#include "Measure.h"
#include "NoDialogs.h"

#include "bass/modBass.h"
#include "core/modINI.h"
#include "forms/wmain.h"
#include "linux/DlLibraries.h"
#include "linux/LinuxFiles.h"
#include "linux/ProfileFile.h"
#include "sound/TransportState.h"
#include "visualisation/Spectrum.h"

#include <cstdlib>
#include <thread>

namespace {

using namespace velmo;

constexpr int Frames = 200;
constexpr auto Pace = std::chrono::milliseconds(25);

DWORD Play(const modBass& bass, const char* file)
{
    constexpr DWORD Hertz = 44100;
    if (bass.BASS_Init(-1, Hertz, 0, nullptr, nullptr) == 0)
        return 0;
    const DWORD channel = bass.BASS_StreamCreateFile(0, file, 0, 0, 0);
    return bass.BASS_ChannelPlay(channel, 1) != 0 ? channel : 0;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::fprintf(stderr, "picture_cost PROGRAM_DIRECTORY MUSIC_FILE\n");
        return 2;
    }
    setenv("VELMO_AUDIO", "null", 1);
    DlLibraries libraries;
    modBass bass;
    const BassLibrary library =
        OpenBass(libraries, std::string(argv[1]) + "/" + BassFileName, bass);
    TransportState state;
    if (library.version != 0)
        state.CurrentChannel = Play(bass, argv[2]);
    if (state.CurrentChannel == 0) {
        std::fprintf(stderr, "%s does not play\n", argv[2]);
        return 1;
    }
    LinuxFiles files("");
    ProfileFile settingsFile(files);
    bench::NoDialogs dialogs;
    modINI settings(settingsFile, dialogs, "/");
    forms::wmain form;
    Spectrum spectrum(bass, settings, form, state);
    spectrum.BuildHeaderAndPalette();
    spectrum.SetVisMode(1);
    std::vector<double> seconds;
    for (int frame = 0; frame < Frames; ++frame) {
        std::this_thread::sleep_for(Pace);
        seconds.push_back(bench::Seconds([&] { spectrum.DrawVisualisationFrame(); }));
    }
    bass.BASS_Free();
    constexpr double Bar = 25;
    const double microseconds = bench::Median(seconds) * 1e6;
    bench::Row("one frame of the picture: transform, drawing, handing over",
               bench::Text("%.1f us", microseconds),
               "25 us",
               microseconds < Bar);
    return 0;
}
