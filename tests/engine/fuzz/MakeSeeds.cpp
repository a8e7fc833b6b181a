/// Writes the files that the fuzzers begin with: into the folder named by the first argument, one
/// folder a decoder. They are the same in each run, for the fuzzers' work follows from them.
#include "TestFiles.h"

#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>

namespace velmo::test {
namespace {

void WriteAll(const std::filesystem::path& root)
{
    const auto write = [&](const char* decoder, const std::string& name, const Bytes& bytes) {
        std::filesystem::create_directories(root / decoder);
        std::ofstream(root / decoder / name, std::ios::binary) << bytes;
    };
    const struct
    {
        const char* decoder;
        const char* name;
        const char* encoder;
        const char* suffix;
    } encoded[] = {
        {"Wav",     "pcm",    "pcm_s16le",                           ".wav" },
        {"Wav",     "float",  "pcm_f32le -ac 6",                     ".wav" },
        {"Wav",     "adpcm",  "adpcm_ms",                            ".wav" },
        {"Aiff",    "pcm",    "pcm_s16be",                           ".aiff"},
        {"Vorbis",  "vorbis", "libvorbis -fflags +bitexact",         ".ogg" },
        {"Mpeg",    "info",   "libmp3lame -q:a 4",                   ".mp3" },
        {"Mpeg",    "plain",  "libmp3lame -write_xing 0",            ".mp3" },
        {"Flac",    "pcm",    "flac",                                ".flac"},
        {"Flac",    "ogg",    "flac -fflags +bitexact",              ".oga" },
        {"Opus",    "opus",   "opusenc --quiet --serial 1 $in $out", ".opus"},
        {"WavPack", "pcm",    "wavpack -q $in -o $out",              ".wv"  },
        {"WavPack", "lossy",  "wavpack -q -b256 $in -o $out",        ".wv"  },
        {"WavPack", "floats", "wavpack -sample_fmt fltp",            ".wv"  },
        {"Ffmpeg",  "m4a",    "aac",                                 ".m4a" },
        {"Ffmpeg",  "aac",    "aac",                                 ".aac" },
        {"Ffmpeg",  "ac3",    "ac3",                                 ".ac3" },
        {"Ffmpeg",  "eac3",   "eac3",                                ".eac3"},
        {"Ffmpeg",  "tta",    "tta",                                 ".tta" },
        {"Ffmpeg",  "wma",    "wmav2",                               ".wma" },
        {"Ffmpeg",  "mpc",    "mpcenc --silent $in $out",            ".mpc" },
        {"Ffmpeg",  "alac",   "alac",                                ".m4a" },
    };
    for (const auto& seed : encoded)
        write(seed.decoder, seed.name, Encode(seed.encoder, seed.suffix, {.frames = 3000}));
    write("Mpeg", "layer1", MakeSilentMpeg(1, 4));
    write("Mpeg", "layer2", MakeSilentMpeg(2, 4));
    for (const auto& [kind, bytes] : MakeModules())
        write("Module", kind, bytes);
}

} // namespace
} // namespace velmo::test

int main(int argc, char** argv)
{
    try {
        if (argc == 2)
            velmo::test::WriteAll(argv[1]);
        return argc == 2 ? 0 : 2;
    } catch (const std::exception& failure) {
        (void) std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
}
