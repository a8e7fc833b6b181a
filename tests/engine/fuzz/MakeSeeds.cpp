/// Writes the files that the fuzzers begin with: into the folder named by the first argument, one
/// folder a decoder.
#include "EncodedFiles.h"
#include "TestFiles.h"

#include <sndfile.h>

#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>

namespace {

using velmo::test::Bytes;

void Write(const std::filesystem::path& folder, const char* name, const Bytes& bytes)
{
    std::filesystem::create_directories(folder);
    std::ofstream file(folder / name, std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
}

void WriteOfPlugins(const std::filesystem::path& root)
{
    using velmo::test::Encode, velmo::test::EncodeFloats, velmo::test::MakeSndfile,
        velmo::test::SoundShape;
    constexpr SoundShape Short = {.frames = 3000};
    constexpr SoundShape Wide = {.frames = 3000, .channels = 6};
    Write(root / "Flac", "pcm", MakeSndfile(SF_FORMAT_FLAC | SF_FORMAT_PCM_16, Short));
    Write(root / "Flac", "ogg", Encode("flac --silent --ogg -o $out $in", ".oga", Short));
    Write(root / "Opus", "opus", Encode("opusenc --quiet $in $out", ".opus", Short));
    Write(root / "WavPack", "pcm", Encode("wavpack -q $in -o $out", ".wv", Short));
    Write(root / "WavPack", "lossy", Encode("wavpack -q -b256 $in -o $out", ".wv", Short));
    Write(root / "WavPack", "floats", EncodeFloats("wavpack -q $in -o $out", ".wv", Wide));
    for (const char* const suffix : {".m4a", ".aac", ".ac3", ".eac3", ".tta", ".wma"})
        Write(root / "Ffmpeg",
              suffix + 1,
              Encode("ffmpeg -nostdin -v error -i $in $out", suffix, Short));
    Write(root / "Ffmpeg", "mpc", Encode("mpcenc --silent $in $out", ".mpc", Short));
    Write(root / "Ffmpeg",
          "alac",
          Encode("ffmpeg -nostdin -v error -i $in -c:a alac $out", ".m4a", Short));
}

void WriteAll(const std::filesystem::path& root)
{
    using velmo::test::Join, velmo::test::MakeId3v2, velmo::test::MakeModule, velmo::test::MakeMp3,
        velmo::test::MakeSilentMpeg, velmo::test::MakeSndfile, velmo::test::ModuleFormat,
        velmo::test::Mp3Mode, velmo::test::SoundShape;
    constexpr SoundShape Short = {.frames = 3000};
    Write(root / "Wav", "pcm", MakeSndfile(SF_FORMAT_WAV | SF_FORMAT_PCM_16, Short));
    Write(root / "Wav", "float", MakeSndfile(SF_FORMAT_WAV | SF_FORMAT_FLOAT, Short));
    Write(root / "Wav", "adpcm", MakeSndfile(SF_FORMAT_WAV | SF_FORMAT_MS_ADPCM, Short));
    Write(root / "Aiff", "pcm", MakeSndfile(SF_FORMAT_AIFF | SF_FORMAT_PCM_16, Short));
    Write(root / "Vorbis", "vorbis", MakeSndfile(SF_FORMAT_OGG | SF_FORMAT_VORBIS, Short));
    Write(root / "Mpeg", "info", MakeMp3(Mp3Mode::Variable, Short));
    Write(root / "Mpeg", "plain", Join(MakeId3v2(30), MakeMp3(Mp3Mode::ConstantPlain, Short)));
    Write(root / "Mpeg", "layer1", MakeSilentMpeg(1, 4));
    Write(root / "Mpeg", "layer2", MakeSilentMpeg(2, 4));
    Write(root / "Module", "mod", MakeModule(ModuleFormat::Mod));
    Write(root / "Module", "xm", MakeModule(ModuleFormat::Xm));
    Write(root / "Module", "s3m", MakeModule(ModuleFormat::S3m));
    Write(root / "Module", "it", MakeModule(ModuleFormat::It));
    Write(root / "Module", "mtm", MakeModule(ModuleFormat::Mtm));
    Write(root / "Module", "umx", MakeModule(ModuleFormat::Umx));
}

} // namespace

int main(int argc, char** argv)
{
    try {
        if (argc == 2) {
            WriteAll(argv[1]);
            WriteOfPlugins(argv[1]);
        }
        return argc == 2 ? 0 : 2;
    } catch (const std::exception& failure) {
        (void) std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
}
