// Opening and closing 1,000 tagged MP3 files for title and length: open_speed DIRECTORY_OF_LIBBASS
// DIRECTORY_OF_FILES The files are tagged/*.mp3. The yardstick is TagLib for the tags and libmpg123
// for the length, alone.

#include "BareTags.h"
#include "EngineTable.h"
#include "Measure.h"
#include "tags.h"

#include <filesystem>

namespace velmo::bench {

namespace {

std::vector<std::string> Files(const std::string& directory)
{
    std::vector<std::string> paths;
    for (const auto& entry : std::filesystem::directory_iterator(directory))
        paths.push_back(entry.path().string());
    std::sort(paths.begin(), paths.end());
    return paths;
}

using TagCall = const char* (*) (DWORD, const char*);

// Both ways answer how much they found, so that no part of them can be left out.

std::size_t Found(const char* text)
{
    return text != nullptr ? 1 : 0;
}

std::size_t Ours(const EngineTable& engine, TagCall read, TagCall readV1, const std::string& path)
{
    const DWORD channel = engine.StreamCreateFile(0, path.c_str(), 0, 0, 0);
    std::size_t found = 0;
    for (const char* field : {"%ARTI", "%TITL"}) {
        found += Found(read(channel, field));
        found += Found(readV1(channel, field));
    }
    found += engine.ChannelGetLength(channel, 0) > 0 ? 1 : 0;
    engine.StreamFree(channel);
    return found;
}

} // namespace

} // namespace velmo::bench

int main(int argc, char** argv)
{
    using namespace velmo::bench;
    if (argc != 3) {
        std::fprintf(stderr, "open_speed DIRECTORY_OF_LIBBASS DIRECTORY_OF_FILES\n");
        return 2;
    }
    setenv("VELMO_AUDIO", "null", 1);
    const EngineTable engine = LoadEngine(argv[1]);
    void* tags = dlopen((std::string(argv[1]) + "/libvelmotags.so").c_str(), RTLD_NOW | RTLD_LOCAL);
    TagCall read = nullptr;
    TagCall readV1 = nullptr;
    Find(tags, "TAGS_Read", read);
    Find(tags, "TAGS_ID3V1_Read", readV1);
    engine.Init(-1, 44100, 0, nullptr, nullptr);
    const std::vector<std::string> paths = Files(std::string(argv[2]) + "/tagged");
    std::size_t found = 0;
    const Pair pair = InTurns(
        7,
        [&] {
            return Seconds([&] {
                for (const std::string& path : paths)
                    found += Ours(engine, read, readV1, path);
            });
        },
        [&] {
            return Seconds([&] {
                for (const std::string& path : paths)
                    found += ReadTagsAndLength(path);
            });
        });
    const double ratio = pair.ours / pair.yardstick;
    Row("open and close " + std::to_string(paths.size()) + " tagged MP3 files for title and length",
        Text("%.2f times TagLib and libmpg123 alone", ratio) + Text(" (%.0f ms)", pair.ours * 1000),
        "1.5",
        ratio <= 1.5);
    engine.Free();
    return 0;
}
