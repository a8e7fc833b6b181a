/// Every decoder by the same rules: exact length, exact seek, exact end.
#include "OpenTestFile.h"
#include "bass.h"

#include "decode/FileWindow.h"

#include <gtest/gtest.h>
#include <sndfile.h>

#include <iterator>
#include <span>
#include <utility>

namespace velmo::test {
namespace {

using engine::SourceKind;

constexpr std::size_t Frames = 100003;
constexpr SoundShape Stereo = {.frames = Frames};
constexpr std::size_t ModuleFrames = 677376; ///< 2 * 64 rows of 6 ticks of 20 ms at 44.1 kHz

enum class Samples
{
    Exact, ///< the decoded samples are `Noise`, to 16 bits
    Lossy
};

struct FileCase
{
    const char* name;
    Bytes bytes;
    std::uint32_t ctype;
    std::size_t frames;
    Samples samples = Samples::Lossy;
    SourceKind kind = SourceKind::Stream;
    std::uint32_t channels = 2;
    std::uint32_t sampleRate = 44100;
    float seekDifference = 0; ///< what a sample may differ by after a seek
};

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

float Difference(std::span<const float> a, std::span<const float> b)
{
    float most = 0;
    for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i)
        most = std::max(most, std::abs(a[i] - b[i]));
    return most;
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

std::vector<FileCase> FileCases()
{
    constexpr int Flac = SF_FORMAT_FLAC | SF_FORMAT_PCM_16;
    FileCase tagged = Exact("flac behind a tag", Flac, BASS_CTYPE_STREAM_FLAC);
    tagged.bytes = Join(MakeId3v2(9000), tagged.bytes);
    // As written to a pipe: the 36 bits of the number of frames are 0.
    FileCase piped = Exact("flac of untold length", Flac, BASS_CTYPE_STREAM_FLAC);
    piped.bytes[21] &= 0xF0U;
    std::fill_n(piped.bytes.begin() + 22, 4, std::uint8_t{0});
    std::vector<FileCase> cases = {
        Exact("wav 16", SF_FORMAT_WAV | SF_FORMAT_PCM_16, BASS_CTYPE_STREAM_WAV),
        Exact("wav 24", SF_FORMAT_WAV | SF_FORMAT_PCM_24, BASS_CTYPE_STREAM_WAV),
        Exact("wav float", SF_FORMAT_WAV | SF_FORMAT_FLOAT, BASS_CTYPE_STREAM_WAV, Surround),
        Exact("aiff", SF_FORMAT_AIFF | SF_FORMAT_PCM_16, BASS_CTYPE_STREAM_AIFF),
        Exact("flac", Flac, BASS_CTYPE_STREAM_FLAC),
        tagged,
        piped,
        Module("mod", ModuleFormat::Mod),
        Module("xm", ModuleFormat::Xm),
        Module("s3m", ModuleFormat::S3m),
        Module("it", ModuleFormat::It),
        Module("mtm", ModuleFormat::Mtm),
        Module("umx", ModuleFormat::Umx)};
    std::ranges::move(VorbisCases(), std::back_inserter(cases));
    std::ranges::move(MpegCases(), std::back_inserter(cases));
    return cases;
}

class EveryFormat : public testing::Test
{
protected:
    TemporaryFolder m_folder;
};

TEST_F(EveryFormat, TellsItsShapeAndGivesExactlyItsLength)
{
    for (const FileCase& file : FileCases()) {
        SCOPED_TRACE(file.name);
        const auto source = OpenFile(m_folder.Write("file", file.bytes), file.kind);
        ASSERT_EQ(source.error, 0);
        const BASS_SOURCE_FORMAT format = source.value->Format();
        EXPECT_EQ(format.ctype, file.ctype);
        EXPECT_EQ(format.channels, file.channels);
        EXPECT_EQ(format.sampleRate, file.sampleRate);
        EXPECT_EQ(format.lengthFrames, file.frames);
        const std::vector<float> decoded = ReadAll(*source.value);
        EXPECT_EQ(decoded.size(), file.frames * file.channels);
        EXPECT_EQ(source.value->Read(nullptr, 0), 0U);
        if (file.samples == Samples::Lossy || decoded.size() != file.frames * file.channels)
            continue;
        const std::vector<float> noise = Noise(file.frames, file.channels);
        EXPECT_LE(Difference(noise, decoded), 1.01f / 32768.0f);
    }
}

TEST_F(EveryFormat, RefusesToOpenAsTheOtherKind)
{
    for (const FileCase& file : FileCases()) {
        SCOPED_TRACE(file.name);
        const SourceKind other =
            file.kind == SourceKind::Stream ? SourceKind::Music : SourceKind::Stream;
        EXPECT_EQ(OpenFile(m_folder.Write("file", file.bytes), other).error, 41);
    }
}

TEST_F(EveryFormat, SeeksToTheVeryFrame)
{
    for (const FileCase& file : FileCases()) {
        if (file.kind == SourceKind::Music)
            continue;
        SCOPED_TRACE(file.name);
        const auto source = OpenFile(m_folder.Write("file", file.bytes), file.kind);
        ASSERT_EQ(source.error, 0);
        const std::vector<float> straight = ReadAll(*source.value);
        for (const std::size_t target : {file.frames / 2,
                                         std::size_t{0},
                                         std::size_t{1},
                                         std::size_t{4000},
                                         file.frames - 1,
                                         file.frames / 3}) {
            SCOPED_TRACE(target);
            ASSERT_TRUE(source.value->Seek(target));
            const std::vector<float> rest = ReadAll(*source.value);
            const auto wanted = std::span(straight).subspan(target * file.channels);
            ASSERT_EQ(rest.size(), wanted.size());
            EXPECT_LE(Difference(rest, wanted), file.seekDifference);
        }
        ASSERT_TRUE(source.value->Seek(file.frames));
        EXPECT_TRUE(ReadAll(*source.value).empty());
        EXPECT_FALSE(source.value->Seek(file.frames + 1));
    }
}

TEST_F(EveryFormat, JoinedMpegFilesPlayToTheEndOfTheLast)
{
    const Bytes mp3 = MakeMp3(Mp3Mode::Variable, Stereo);
    const auto source = OpenFile(m_folder.Write("file", Join(mp3, mp3)), SourceKind::Stream);
    ASSERT_EQ(source.error, 0);
    const std::uint64_t frames = source.value->Format().lengthFrames;
    EXPECT_GE(frames, 2 * Frames);
    EXPECT_LE(frames, 2 * Frames + std::uint64_t{8} * 1152) << "both keep their padding";
    EXPECT_EQ(ReadAll(*source.value).size(), frames * 2);
}

TEST_F(EveryFormat, WhatWasCutOffTheEndIsNotReadFromTheBuffer)
{
    auto file = engine::File::Open(m_folder.Write("file", Bytes(1000, 1)).c_str());
    ASSERT_EQ(file.error, 0);
    engine::FileWindow window(std::move(file.value), 0);
    Bytes bytes(1000);
    ASSERT_EQ(window.Read(std::span(bytes).first(100)), 100U);
    window.DropEnd(300);
    EXPECT_EQ(window.Read(bytes), 600U);
    EXPECT_EQ(window.Read(bytes), 0U);
}

TEST_F(EveryFormat, SurroundChannelsStandInTheOrderOfWav)
{
    const Bytes vorbis = MakeSndfile(SF_FORMAT_OGG | SF_FORMAT_VORBIS, Surround);
    const auto source = OpenFile(m_folder.Write("file", vorbis), SourceKind::Stream);
    ASSERT_EQ(source.error, 0);
    const std::vector<float> decoded = ReadAll(*source.value);
    const std::vector<float> noise = Noise(Surround.frames, Surround.channels);
    ASSERT_EQ(decoded.size(), noise.size());
    // The writing library hands channels to the encoder as they come: these are Vorbis' left,
    // right, middle, rear left and rear right. Its low frequency channel would keep low frequencies
    // only.
    using Pair = std::pair<int, int>;
    constexpr std::array Pairs = {Pair(0, 0), Pair(1, 2), Pair(2, 1), Pair(4, 3), Pair(5, 4)};
    for (const auto& [place, channel] : Pairs) {
        double product = 0;
        double energy = 0;
        for (std::size_t i = 0; i < noise.size(); i += Surround.channels) {
            const double original = noise[i + static_cast<std::size_t>(channel)];
            product += original * decoded[i + static_cast<std::size_t>(place)];
            energy += original * original;
        }
        EXPECT_GT(product / energy, 0.8) << place;
    }
}

/// First frame of every burst of sound: 200 silent frames stand before it.
std::vector<std::size_t> Onsets(std::span<const float> stereo)
{
    std::vector<std::size_t> onsets;
    std::size_t silent = 1000;
    for (std::size_t frame = 0; frame < stereo.size() / 2; ++frame) {
        const bool sounds = std::abs(stereo[2 * frame]) > 0.01f;
        if (sounds && silent > 200)
            onsets.push_back(frame);
        silent = sounds ? 0 : silent + 1;
    }
    return onsets;
}

class EveryModule : public testing::TestWithParam<ModuleFormat>
{};

TEST_P(EveryModule, SeekKeepsNotesAndEndInTheirPlaces)
{
    const TemporaryFolder folder;
    const auto source = OpenFile(folder.Write("song", MakeModule(GetParam())), SourceKind::Music);
    ASSERT_EQ(source.error, 0);
    const std::vector<std::size_t> straight = Onsets(ReadAll(*source.value));
    ASSERT_EQ(straight.size(), 8U);
    for (const std::size_t target : {300000U, 1U, 84000U, 84672U, 500001U, 0U, 677375U}) {
        SCOPED_TRACE(target);
        ASSERT_TRUE(source.value->Seek(target));
        const std::vector<float> rest = ReadAll(*source.value);
        ASSERT_EQ(rest.size() / 2, ModuleFrames - target);
        // Where a note is sounding at the target, its middle counts as an onset: left out on both
        // sides.
        std::vector<std::size_t> expected;
        std::vector<std::size_t> found;
        constexpr std::size_t NoteFrames = 4000;
        for (const std::size_t onset : straight)
            if (onset >= target + NoteFrames)
                expected.push_back(onset);
        for (const std::size_t onset : Onsets(rest))
            if (onset >= NoteFrames)
                found.push_back(onset + target);
        EXPECT_EQ(found, expected);
    }
}

TEST_P(EveryModule, IsRenderedAtTheDevicesRate)
{
    const TemporaryFolder folder;
    const auto source =
        OpenFile(folder.Write("song", MakeModule(GetParam())), SourceKind::Music, 48000);
    ASSERT_EQ(source.error, 0);
    EXPECT_EQ(source.value->Format().sampleRate, 48000U);
    EXPECT_EQ(source.value->Format().lengthFrames, 737280U);
}

INSTANTIATE_TEST_SUITE_P(Formats,
                         EveryModule,
                         testing::Values(ModuleFormat::Mod,
                                         ModuleFormat::Xm,
                                         ModuleFormat::S3m,
                                         ModuleFormat::It,
                                         ModuleFormat::Mtm,
                                         ModuleFormat::Umx));

} // namespace
} // namespace velmo::test
