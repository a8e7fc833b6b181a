#include "FileCases.h"

#include "bass.h"

#include "support/LittleEndian.h"

#include <algorithm>
#include <utility>

namespace velmo::test {
namespace {

constexpr SoundShape Surround = {.frames = 20000, .channels = 6, .sampleRate = 48000};
constexpr SoundShape Mono = {.frames = 40000, .channels = 1, .sampleRate = 22050};
constexpr SoundShape Short = {.frames = 16000}; // one page of Ogg
constexpr SoundShape Opus = {.frames = 100003, .sampleRate = 48000};

/// Decoders that are asked for no exact length tell whole packets, the encoder's delay included.
constexpr SoundShape Packets(std::size_t count, std::size_t frames)
{
    return {.frames = count * frames};
}

constexpr SoundShape Layer3 = Packets(88, 1152);
constexpr SoundShape Aac = Packets(99, 1024);
constexpr SoundShape Ac3 = Packets(66, 1536);
constexpr SoundShape Wma = {.frames = 98318}; // 2.275 s less two packets, and the frame at the end

constexpr auto Exact = Samples::Exact;
constexpr auto Alike = Samples::Alike;
constexpr auto Lossy = Samples::Lossy;

/// Noise that a decoder makes is another after a seek.
constexpr float Noisy = 0.02f;
/// At half rates the decoding library adds in another order after a seek.
constexpr float LastBit = 1e-6f;

/// A file that an encoder makes, as `Encode` has it: of as many frames as are decoded, or, lossy,
/// of `Stereo`.
struct EncodedCase
{
    const char* name;
    const char* encoder;
    const char* suffix;
    std::uint32_t ctype;
    Samples samples;
    SoundShape shape;
    float seekDifference;
};

constexpr char Vorbis[] = "libvorbis -q:a 6 -page_duration 20000"; // many pages
constexpr char PlainMp3[] = "libmp3lame -b:a 128k -write_xing 0";
constexpr char SofterMp3[] = // of a lower rate after the first second
    "libmp3lame -q:a 4 -write_xing 0 -af 'volume=if(gt(t\\,1)\\,0.001\\,1):eval=frame'";
constexpr char WavPackLossy[] = "wavpack -q -b256 $in -o $out";
constexpr char WavPackFloats[] = "ffmpeg -nostdin -v error -i $in -c:a pcm_f32le f.wav &&"
                                 " wavpack -q --blocksize=4096 f.wav -o $out";
constexpr char Fragments[] = "alac -movflags dash+global_sidx -frag_duration 300000";
constexpr char OpusEncoder[] = "opusenc --quiet --bitrate 256 --max-delay 100 $in $out";
constexpr char OtherOpus[] = "opusenc --quiet --serial 7 $in $out";

constexpr EncodedCase EncodedCases[] = {
    {"wav 16",                      "pcm_s16le",                ".wav",  BASS_CTYPE_STREAM_WAV,      Exact, Stereo,   0      },
    {"wav 24",                      "pcm_s24le",                ".wav",  BASS_CTYPE_STREAM_WAV,      Exact, Stereo,   0      },
    {"wav float",                   "pcm_f32le",                ".wav",  BASS_CTYPE_STREAM_WAV,      Exact, Surround, 0      },
    {"aiff",                        "pcm_s16be",                ".aiff", BASS_CTYPE_STREAM_AIFF,     Exact, Stereo,   0      },
    {"vorbis",                      Vorbis,                     ".ogg",  BASS_CTYPE_STREAM_OGG,      Alike, Stereo,   0      },
    {"vorbis surround",             Vorbis,                     ".ogg",  BASS_CTYPE_STREAM_OGG,      Alike, Surround, 0      },
    {"vorbis short",                "libvorbis -q:a 6",         ".ogg",  BASS_CTYPE_STREAM_OGG,      Alike, Short,    0      },
    {"mp3 constant",                "libmp3lame -b:a 128k",     ".mp3",  BASS_CTYPE_STREAM_MP3,      Alike, Stereo,   0      },
    {"mp3 variable",                "libmp3lame -q:a 4",        ".mp3",  BASS_CTYPE_STREAM_MP3,      Alike, Stereo,   0      },
    {"mp3 mono",                    "libmp3lame -b:a 64k",      ".mp3",  BASS_CTYPE_STREAM_MP3,      Alike, Mono,     LastBit},
    {"mp3 constant without header", PlainMp3,                   ".mp3",  BASS_CTYPE_STREAM_MP3,      Lossy, Layer3,   0      },
    {"mp3 variable without header", SofterMp3,                  ".mp3",  BASS_CTYPE_STREAM_MP3,      Lossy, Layer3,   0      },
    {"flac",                        "flac",                     ".flac", BASS_CTYPE_STREAM_FLAC,     Exact, Stereo,   0      },
    {"flac 24",                     "flac -sample_fmt s32",     ".flac", BASS_CTYPE_STREAM_FLAC,     Exact, Surround, 0      },
    {"flac in ogg",                 "flac",                     ".oga",  BASS_CTYPE_STREAM_FLAC_OGG, Exact, Stereo,   0      },
    {"wavpack",                     "wavpack -q $in -o $out",   ".wv",   BASS_CTYPE_STREAM_WV,       Exact, Stereo,   0      },
    {"wavpack floats",              WavPackFloats,              ".wv",   BASS_CTYPE_STREAM_WV,       Exact, Surround, 0      },
    {"wavpack lossy",               WavPackLossy,               ".wv",   BASS_CTYPE_STREAM_WV,       Alike, Stereo,   0      },
    {"opus",                        OpusEncoder,                ".opus", BASS_CTYPE_STREAM_OPUS,     Alike, Opus,     Noisy  },
    {"opus of another serial",      OtherOpus,                  ".opus", BASS_CTYPE_STREAM_OPUS,     Alike, Opus,     Noisy  },
    {"opus surround",               OpusEncoder,                ".opus", BASS_CTYPE_STREAM_OPUS,     Alike, Surround, Noisy  },
    {"m4a",                         "aac -b:a 256k",            ".m4a",  BASS_CTYPE_STREAM_MP4,      Alike, Stereo,   Noisy  },
    {"m4a surround",                "aac -b:a 600k",            ".m4a",  BASS_CTYPE_STREAM_MP4,      Alike, Surround, Noisy  },
    {"alac",                        "alac",                     ".m4a",  BASS_CTYPE_STREAM_ALAC,     Exact, Stereo,   0      },
    {"alac in fragments",           Fragments,                  ".m4a",  BASS_CTYPE_STREAM_ALAC,     Exact, Stereo,   0      },
    {"alac in fragments, short",    Fragments,                  ".m4a",  BASS_CTYPE_STREAM_ALAC,     Exact, Short,    0      },
    {"musepack",                    "mpcenc --silent $in $out", ".mpc",  BASS_CTYPE_STREAM_MPC,      Alike, Stereo,   Noisy  },
    {"tta",                         "tta",                      ".tta",  BASS_CTYPE_STREAM_TTA,      Exact, Stereo,   0      },
    {"aac",                         "aac -b:a 256k",            ".aac",  BASS_CTYPE_STREAM_AAC,      Lossy, Aac,      Noisy  },
    {"ac3",                         "ac3 -b:a 448k",            ".ac3",  BASS_CTYPE_STREAM_AC3,      Lossy, Ac3,      Noisy  },
    {"wma",                         "wmav2 -b:a 192k",          ".wma",  BASS_CTYPE_STREAM_WMA,      Lossy, Wma,      Noisy  },
};

/// A file of Monkey's Audio, version 3.99: three blocks that say of themselves that they are
/// silent. No encoder of it is free.
FileCase SilentApe()
{
    constexpr std::uint32_t Full = 73728;
    constexpr std::uint32_t Last = 5000;
    const Bytes silence = LittleEndian(4, {0x80000000, 3, 0, 0});
    const Bytes head =
        LittleEndian(4, {0x2043414D, 3990, 52, 24, 12, 0, 48, 0, 0, 0, 0, 0, 0})
        + LittleEndian(4, {32U << 16U | 1000U, Full, Last, 3, 2U << 16U | 16U, 44100})
        + LittleEndian(4, {88, 104, 120}); // where the blocks begin
    return {"ape",
            head + silence + silence + silence,
            BASS_CTYPE_STREAM_APE,
            Lossy,
            {.frames = 2 * Full + Last}};
}

/// Sound with a tag behind it that holds what looks like sound, too.
FileCase BeforeApeTag()
{
    const Bytes picture = MakeSilentMpeg(2, 5);
    const auto tagBytes = static_cast<std::uint32_t>(picture.size() + 32);
    const Bytes footer = "APETAGEX" + LittleEndian(4, {2000, tagBytes, 1, 0, 0, 0});
    const Bytes id3v1 = "TAG" + Bytes(125, ' ');
    return {"mp2 before tags",
            MakeSilentMpeg(2, 10) + picture + footer + id3v1,
            BASS_CTYPE_STREAM_MP2,
            Lossy,
            Packets(10, 1152)};
}

void AddModules(std::vector<FileCase>& cases)
{
    for (const auto& [name, bytes] : MakeModules()) {
        FileCase song = {name, bytes, BASS_CTYPE_MUSIC, Lossy, {.frames = ModuleFrames}};
        song.kind = engine::SourceKind::Music;
        cases.push_back(std::move(song));
    }
}

/// What is made of other files.
void AddJoined(std::vector<FileCase>& cases)
{
    const auto add = [&](FileCase file, const char* name, Bytes bytes) -> FileCase& {
        file.name = name;
        file.bytes = std::move(bytes);
        cases.push_back(std::move(file));
        return cases.back();
    };
    const auto of = [&](const char* name) { return CaseOf(cases, name); };
    const auto addBehind = [&](const char* name, const char* file, const Bytes& front) {
        add(of(file), name, front + of(file).bytes);
    };
    const auto addChain = [&](const char* name, const FileCase& first, const FileCase& second) {
        FileCase& chain = add(first, name, first.bytes + second.bytes);
        chain.samples = Lossy;
        if (first.shape.channels == second.shape.channels)
            chain.shape.frames += second.shape.frames;
    };
    addChain("vorbis chained", of("vorbis short"), of("vorbis"));
    addChain("vorbis, another format behind", of("vorbis short"), of("vorbis surround"));
    addChain("opus chained", of("opus"), of("opus of another serial"));
    addBehind("mp3 behind a large tag", "mp3 variable", MakeId3v2(300000, '\xFF'));
    addBehind("mp3 behind two tags", "mp3 variable", MakeId3v2(4090) + MakeId3v2(20));
    addBehind("mp3 behind garbage", "mp3 variable", Bytes(30000, 'U'));
    addBehind("flac behind two tags", "flac", MakeId3v2(9000) + MakeId3v2(20));
    // As written to a pipe: the 36 bits of the number of frames are 0.
    Bytes& piped = add(of("flac"), "flac of untold length", of("flac").bytes).bytes;
    piped[21] = static_cast<char>(piped[21] & 0xF0);
    piped.replace(22, 4, 4, '\0');
}

} // namespace

FileCase CaseOf(const std::vector<FileCase>& cases, const std::string& name)
{
    return *std::ranges::find(cases, name, &FileCase::name);
}

std::vector<FileCase> FileCases()
{
    std::vector<FileCase> cases = {
        SilentApe(),
        BeforeApeTag(),
        {"mp2", MakeSilentMpeg(2, 50), BASS_CTYPE_STREAM_MP2, Lossy, Packets(50, 1152)},
        {"mp1", MakeSilentMpeg(1, 50), BASS_CTYPE_STREAM_MP1, Lossy, Packets(50, 384) }
    };
    for (const EncodedCase& c : EncodedCases)
        cases.push_back({c.name,
                         Encode(c.encoder, c.suffix, c.samples == Lossy ? Stereo : c.shape),
                         c.ctype,
                         c.samples,
                         c.shape,
                         c.seekDifference});
    AddModules(cases);
    AddJoined(cases);
    return cases;
}

} // namespace velmo::test
