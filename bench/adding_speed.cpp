// How fast folders are walked and added, against `find` and against the bare libraries.

#include "BareTags.h"
#include "ListOnDisk.h"
#include "Measure.h"

#include "bass/TagLibrary.h"
#include "bass/modBass.h"
#include "core/SettingsKeys.h"
#include "linux/DlLibraries.h"
#include "playlist/Adding.h"

#include <spawn.h>

#include <fstream>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace velmo::bench {

namespace {

constexpr int Folders = 1000;
constexpr int FilesPerFolder = 10;

void MakeTree(const std::string& top)
{
    for (int folder = 0; folder < Folders; ++folder) {
        const std::string path =
            top + "/artist " + std::to_string(folder % 50) + "/album " + std::to_string(folder);
        std::filesystem::create_directories(path);
        for (int file = 0; file < FilesPerFolder; ++file)
            std::ofstream(path + "/track " + std::to_string(file) + ".mp3");
    }
}

/// `find` as a process of its own, its output thrown away.
double FindSeconds(const std::string& top)
{
    return Seconds([&] {
        const char* const arguments[] = {"find", top.c_str(), "-type", "f", nullptr};
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        pid_t child = 0;
        ::posix_spawnp(
            &child, "find", &actions, nullptr, const_cast<char* const*>(arguments), environ);
        ::waitpid(child, nullptr, 0);
        posix_spawn_file_actions_destroy(&actions);
    });
}

/// The list with the doors through which files come in.
struct AddingOnDisk : ListOnDisk
{
    explicit AddingOnDisk(const std::string& libraryDirectory)
        : tagLibrary(libraries, libraryDirectory + "/" + TagLibraryFileName)
        , opened(OpenBass(libraries, libraryDirectory + "/" + BassFileName, bass))
    {
        if (opened.version == 0) {
            std::fprintf(stderr, "no sound library in %s\n", libraryDirectory.c_str());
            std::exit(2);
        }
        bass.BASS_Init(-1, 44100, 0, nullptr, nullptr);
    }
    AddingOnDisk(const AddingOnDisk&) = delete;
    AddingOnDisk& operator=(const AddingOnDisk&) = delete;
    ~AddingOnDisk() { bass.BASS_Free(); }

    std::size_t Add(const std::string& path, const char* readTitlesOn)
    {
        settings.WriteSetting(sections::Options, keys::ReadTitlesOn, readTitlesOn);
        playlist.pl.Clear();
        adding.AddPath(path);
        return playlist.pl.Count();
    }

    DlLibraries libraries;
    modBass bass;
    TagLibrary tagLibrary;
    BassLibrary opened;
    modTags tags{bass, tagLibrary, files, directory("")};
    EntryMaker entries{playlist, tags};
    PluginTable plugins;
    MediaFilter filter{plugins};
    Adding adding{
        {list, entries, filter, ordering},
        playlist, settings, files
    };
};

void MeasureNames(AddingOnDisk& disk)
{
    const std::string top = disk.directory("music");
    MakeTree(top);
    std::size_t found = 0;
    const auto yardstick = [&] { return FindSeconds(top); };
    const Pair walk = InTurns(
        15,
        [&] { return Seconds([&] { found = disk.files.Walk(top + "/", true).size(); }); },
        yardstick);
    const double walkRatio = walk.ours / walk.yardstick;
    Row("walk " + std::to_string(found) + " files in 1,000 folders",
        Text("%.2f times find", walkRatio) + Text(" (%.1f ms)", walk.ours * 1000),
        "1.5",
        walkRatio <= 1.5);
    const Pair add = InTurns(
        15, [&] { return Seconds([&] { found = disk.Add(top, "display"); }); }, yardstick);
    const double addRatio = add.ours / add.yardstick;
    Row("add " + std::to_string(found) + " files by their names, and save",
        Text("%.2f times find", addRatio) + Text(" (%.1f ms)", add.ours * 1000),
        "1.5",
        addRatio <= 1.5);
}

void MeasureTags(AddingOnDisk& disk, const std::string& folder)
{
    std::size_t found = 0;
    std::vector<std::string> paths = disk.files.Walk(folder + "/", false);
    const Pair pair = InTurns(
        7,
        [&] { return Seconds([&] { found = disk.Add(folder, "load"); }); },
        [&] {
            return Seconds([&] {
                for (const std::string& path : paths)
                    ReadTagsAndLength(path);
            });
        });
    const double ratio = pair.ours / pair.yardstick;
    Row("add " + std::to_string(found) + " tagged MP3 files in mode \"load\"",
        Text("%.2f times TagLib and libmpg123 alone", ratio) + Text(" (%.0f ms)", pair.ours * 1000),
        "1.5",
        ratio <= 1.5);
}

} // namespace

} // namespace velmo::bench

int main(int argc, char** argv)
{
    using namespace velmo::bench;
    if (argc != 3) {
        std::fprintf(stderr, "adding_speed DIRECTORY_OF_LIBBASS DIRECTORY_OF_FILES\n");
        return 2;
    }
    setenv("VELMO_AUDIO", "null", 1);
    AddingOnDisk disk(argv[1]);
    MeasureNames(disk);
    MeasureTags(disk, std::string(argv[2]) + "/tagged");
    return 0;
}
