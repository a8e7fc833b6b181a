#include "FileCases.h"

#include "EncodedFiles.h"
#include "bass.h"

#include <sndfile.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

namespace velmo::test {
namespace {

using engine::SourceKind;

constexpr std::size_t Frames = 100003;
constexpr SoundShape Stereo = {.frames = Frames};
constexpr std::size_t ModuleFrames = 677376; ///< 2 * 64 rows of 6 ticks of 20 ms at 44.1 kHz

/// Counts the frame headers by what each says of the next one's place: MPEG 1 layer 3, 44.1 kHz.
std::size_t UntrimmedFrames(const Bytes& plain)
{
    constexpr std::array Kilobits = {
        0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320};
    std::size_t count = 0;
    for (std::size_t at = 0; at + 4 <= plain.size(); ++count) {
        const auto kilobits = static_cast<std::size_t>(Kilobits.at(plain[at + 2] >> 4U));
        at += 144000 * kilobits / 44100 + (plain[at + 2] >> 1U & 1U);
    }
    return count * 1152;
}

constexpr SoundShape Surround = {.frames = 20000, .channels = 6, .sampleRate = 48000};

FileCase Exact(const char* name, int format, std::uint32_t ctype, const SoundShape& shape = Stereo)
{
    return {.name = name,
            .bytes = MakeSndfile(format, shape),
            .ctype = ctype,
            .frames = shape.frames,
            .samples = Samples::Exact,
            .channels = shape.channels,
            .sampleRate = shape.sampleRate};
}

FileCase Lossy(const char* name, Bytes bytes, std::uint32_t ctype, const SoundShape& shape = Stereo)
{
    return {.name = name,
            .bytes = std::move(bytes),
            .ctype = ctype,
            .frames = shape.frames,
            .channels = shape.channels,
            .sampleRate = shape.sampleRate};
}

FileCase Untrimmed(const char* name, Mp3Mode mode)
{
    const Bytes plain = MakeMp3(mode, Stereo);
    return Lossy(name, plain, BASS_CTYPE_STREAM_MP3, {.frames = UntrimmedFrames(plain)});
}

FileCase Module(const char* name, ModuleFormat format)
{
    return {.name = name,
            .bytes = MakeModule(format),
            .ctype = BASS_CTYPE_MUSIC,
            .frames = ModuleFrames,
            .kind = SourceKind::Music};
}

std::vector<FileCase> VorbisCases()
{
    constexpr int Format = SF_FORMAT_OGG | SF_FORMAT_VORBIS;
    constexpr SoundShape Link = {.frames = 20000};
    constexpr SoundShape Chain = {.frames = Link.frames + Frames};
    const Bytes vorbis = MakeSndfile(Format, Stereo);
    const Bytes link = MakeSndfile(Format, Link);
    const Bytes surround = MakeSndfile(Format, Surround);
    return {
        Lossy("vorbis", vorbis, BASS_CTYPE_STREAM_OGG),
        Lossy("vorbis surround", surround, BASS_CTYPE_STREAM_OGG, Surround),
        Lossy("vorbis chained", Join(link, vorbis), BASS_CTYPE_STREAM_OGG, Chain),
        Lossy("vorbis, another format behind", Join(link, surround), BASS_CTYPE_STREAM_OGG, Link)};
}

std::vector<FileCase> MpegCases()
{
    const Bytes mp3 = MakeMp3(Mp3Mode::Variable, Stereo);
    constexpr SoundShape Half = {.frames = 40000, .channels = 1, .sampleRate = 22050};
    constexpr std::size_t Silent = 50;
    FileCase half =
        Lossy("mp3 mono", MakeMp3(Mp3Mode::Constant, Half), BASS_CTYPE_STREAM_MP3, Half);
    // At half rates the decoding library adds in another order after a seek: the last bit differs.
    half.seekDifference = 1e-6f;
    const auto behind = [&](const char* name, const Bytes& front) {
        return Lossy(name, Join(front, mp3), BASS_CTYPE_STREAM_MP3);
    };
    return {
        Lossy("mp3 constant", MakeMp3(Mp3Mode::Constant, Stereo), BASS_CTYPE_STREAM_MP3),
        Lossy("mp3 variable", mp3, BASS_CTYPE_STREAM_MP3),
        half,
        Untrimmed("mp3 constant without header", Mp3Mode::ConstantPlain),
        Untrimmed("mp3 variable without header", Mp3Mode::VariablePlain),
        behind("mp3 behind a large tag", MakeId3v2(300000, 0xFF)),
        behind("mp3 behind two tags", Join(MakeId3v2(4090), MakeId3v2(20))),
        behind("mp3 behind garbage", Bytes(30000, 0x55)),
        Lossy("mp2", MakeSilentMpeg(2, Silent), BASS_CTYPE_STREAM_MP2, {.frames = Silent * 1152}),
        Lossy("mp1", MakeSilentMpeg(1, Silent), BASS_CTYPE_STREAM_MP1, {.frames = Silent * 384})};
}

/// The same again when decoded.
FileCase Lossless(const char* name,
                  Bytes bytes,
                  std::uint32_t ctype,
                  const SoundShape& shape = Stereo)
{
    FileCase file = Lossy(name, std::move(bytes), ctype, shape);
    file.samples = Samples::Exact;
    return file;
}

/// What the encoder changes but little. Noise that a decoder makes is another after a seek.
FileCase Alike(const char* name, Bytes bytes, std::uint32_t ctype, const SoundShape& shape = Stereo)
{
    FileCase file = Lossy(name, std::move(bytes), ctype, shape);
    file.samples = Samples::Alike;
    file.seekDifference = 0.02f;
    return file;
}

std::vector<FileCase> FlacCases()
{
    constexpr int Flac = SF_FORMAT_FLAC | SF_FORMAT_PCM_16;
    FileCase tagged = Exact("flac behind a tag", Flac, BASS_CTYPE_STREAM_FLAC);
    tagged.bytes = Join(MakeId3v2(9000), tagged.bytes);
    // As written to a pipe: the 36 bits of the number of frames are 0.
    FileCase piped = Exact("flac of untold length", Flac, BASS_CTYPE_STREAM_FLAC);
    piped.bytes[21] &= 0xF0U;
    std::fill_n(piped.bytes.begin() + 22, 4, std::uint8_t{0});
    return {Exact("flac", Flac, BASS_CTYPE_STREAM_FLAC),
            Exact("flac 24", SF_FORMAT_FLAC | SF_FORMAT_PCM_24, BASS_CTYPE_STREAM_FLAC, Surround),
            tagged,
            piped,
            Lossless("flac in ogg",
                     Encode("flac --silent --ogg -o $out $in", ".oga", Stereo),
                     BASS_CTYPE_STREAM_FLAC_OGG)};
}

std::vector<FileCase> WavPackCases()
{
    constexpr std::uint32_t Type = BASS_CTYPE_STREAM_WV;
    return {Lossless("wavpack", Encode("wavpack -q $in -o $out", ".wv", Stereo), Type),
            Lossless("wavpack floats",
                     EncodeFloats("wavpack -q --blocksize=4096 $in -o $out", ".wv", Surround),
                     Type,
                     Surround),
            Alike("wavpack lossy", Encode("wavpack -q -b256 $in -o $out", ".wv", Stereo), Type)};
}

std::vector<FileCase> OpusCases()
{
    constexpr SoundShape Plain = {.frames = Frames, .sampleRate = 48000};
    constexpr SoundShape Chain = {.frames = 2 * Plain.frames, .sampleRate = 48000};
    constexpr std::uint32_t Type = BASS_CTYPE_STREAM_OPUS;
    const char* const encode = "opusenc --quiet --bitrate 256 $in $out";
    const Bytes opus = Encode(encode, ".opus", Plain);
    const Bytes other = Encode("opusenc --quiet --serial 7 $in $out", ".opus", Plain);
    FileCase chained = Alike("opus chained", Join(opus, other), Type, Chain);
    chained.samples = Samples::Lossy;
    return {Alike("opus", opus, Type, Plain),
            Alike("opus surround", Encode(encode, ".opus", Surround), Type, Surround),
            chained};
}

/// Encoded by FFmpeg with `codec`.
Bytes Ffmpeg(const std::string& codec, const std::string& suffix, const SoundShape& shape = Stereo)
{
    return Encode("ffmpeg -nostdin -v error -i $in -c:a " + codec + " $out", suffix, shape);
}

/// Decoders that are asked for no exact length tell whole packets, the encoder's delay included.
constexpr SoundShape Packets(std::size_t count, std::size_t frames)
{
    return {.frames = count * frames};
}

/// A file of Monkey's Audio, version 3.99: three blocks that say of themselves that they are
/// silent. No encoder of it is free.
FileCase SilentApe()
{
    constexpr std::uint32_t Full = 73728;
    constexpr std::uint32_t Last = 5000;
    constexpr std::uint32_t Blocks = 3;
    constexpr std::uint32_t BlockWords = 4;
    constexpr std::uint32_t Start = 76 + 4 * Blocks;
    std::vector<std::uint32_t> words = {0x2043414D, 3990, 52, 24, 4 * Blocks, 0};
    words.insert(words.end(), {4 * BlockWords * Blocks, 0, 0, 0, 0, 0, 0}); // size, check sum
    words.insert(words.end(), {32U << 16U | 1000U, Full, Last, Blocks, 2U << 16U | 16U, 44100});
    for (std::uint32_t block = 0; block < Blocks; ++block)
        words.push_back(Start + 4 * BlockWords * block);
    for (std::uint32_t block = 0; block < Blocks; ++block)
        words.insert(words.end(), {0x80000000, 3, 0, 0});
    Bytes bytes;
    for (const std::uint32_t word : words)
        for (unsigned shift = 0; shift < 32; shift += 8)
            bytes.push_back(static_cast<std::uint8_t>(word >> shift & 0xFFU));
    return Lossy("ape", std::move(bytes), BASS_CTYPE_STREAM_APE, {.frames = 2 * Full + Last});
}

std::vector<FileCase> FfmpegCases()
{
    const Bytes adts = Ffmpeg("aac -b:a 256k", ".aac");
    FileCase aac = Alike("aac", adts, BASS_CTYPE_STREAM_AAC, Packets(99, 1024));
    FileCase ac3 =
        Alike("ac3", Ffmpeg("ac3 -b:a 448k", ".ac3"), BASS_CTYPE_STREAM_AC3, Packets(66, 1536));
    FileCase wma = Alike("wma", Ffmpeg("wmav2 -b:a 192k", ".wma"), BASS_CTYPE_STREAM_WMA);
    for (FileCase* const file : {&aac, &ac3, &wma})
        file->samples = Samples::Lossy;
    wma.frames = 98318; // 2.275 s less two packets, and the frame at the end
    return {Alike("m4a", Ffmpeg("aac -b:a 256k", ".m4a"), BASS_CTYPE_STREAM_MP4),
            Alike("m4a surround",
                  Ffmpeg("aac -b:a 600k", ".m4a", Surround),
                  BASS_CTYPE_STREAM_MP4,
                  Surround),
            Lossless("alac", Ffmpeg("alac", ".m4a"), BASS_CTYPE_STREAM_ALAC),
            Alike("musepack",
                  Encode("mpcenc --silent $in $out", ".mpc", Stereo),
                  BASS_CTYPE_STREAM_MPC),
            Lossless("tta", Ffmpeg("tta", ".tta"), BASS_CTYPE_STREAM_TTA),
            SilentApe(),
            aac,
            ac3,
            wma};
}

} // namespace

std::vector<FileCase> PluginCases()
{
    std::vector<FileCase> cases = FlacCases();
    std::ranges::move(WavPackCases(), std::back_inserter(cases));
    std::ranges::move(OpusCases(), std::back_inserter(cases));
    std::ranges::move(FfmpegCases(), std::back_inserter(cases));
    return cases;
}

std::vector<FileCase> FileCases()
{
    std::vector<FileCase> cases = {
        Exact("wav 16", SF_FORMAT_WAV | SF_FORMAT_PCM_16, BASS_CTYPE_STREAM_WAV),
        Exact("wav 24", SF_FORMAT_WAV | SF_FORMAT_PCM_24, BASS_CTYPE_STREAM_WAV),
        Exact("wav float", SF_FORMAT_WAV | SF_FORMAT_FLOAT, BASS_CTYPE_STREAM_WAV, Surround),
        Exact("aiff", SF_FORMAT_AIFF | SF_FORMAT_PCM_16, BASS_CTYPE_STREAM_AIFF),
        Module("mod", ModuleFormat::Mod),
        Module("xm", ModuleFormat::Xm),
        Module("s3m", ModuleFormat::S3m),
        Module("it", ModuleFormat::It),
        Module("mtm", ModuleFormat::Mtm),
        Module("umx", ModuleFormat::Umx)};
    std::ranges::move(VorbisCases(), std::back_inserter(cases));
    std::ranges::move(MpegCases(), std::back_inserter(cases));
    std::ranges::move(PluginCases(), std::back_inserter(cases));
    return cases;
}

} // namespace velmo::test
