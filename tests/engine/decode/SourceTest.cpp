/// Every decoder by the same rules: exact length, exact seek, exact end.
#include "FileCases.h"
#include "OpenTestFile.h"

#include "decode/FileWindow.h"

#include <gtest/gtest.h>
#include <sndfile.h>

#include <iterator>
#include <span>
#include <utility>

namespace velmo::test {
namespace {

using engine::SourceKind;

constexpr std::size_t ModuleFrames = 677376; ///< 2 * 64 rows of 6 ticks of 20 ms at 44.1 kHz
constexpr std::size_t Frames = 100003;
constexpr SoundShape Stereo = {.frames = Frames};
constexpr SoundShape Surround = {.frames = 20000, .channels = 6, .sampleRate = 48000};

float Difference(std::span<const float> a, std::span<const float> b)
{
    float most = 0;
    for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i)
        most = std::max(most, std::abs(a[i] - b[i]));
    return most;
}

/// How much of `channel` of the original is in `place` of what was decoded: 1 is all of it.
double Likeness(std::span<const float> original,
                std::size_t channel,
                std::span<const float> decoded,
                std::size_t place,
                std::size_t channels)
{
    double product = 0;
    double energy = 0;
    for (std::size_t i = 0; i < original.size(); i += channels) {
        product += double{original[i + channel]} * decoded[i + place];
        energy += double{original[i + channel]} * original[i + channel];
    }
    return product / energy;
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
        const std::string path = m_folder.Write("file", file.bytes);
        const SourceKind other =
            file.kind == SourceKind::Stream ? SourceKind::Music : SourceKind::Stream;
        EXPECT_EQ(OpenFile(path, other).error, 41);
        const auto source = OpenFile(path, file.kind);
        ASSERT_EQ(source.error, 0);
        const BASS_SOURCE_FORMAT format = source.value->Format();
        EXPECT_EQ(format.ctype, file.ctype);
        EXPECT_EQ(format.channels, file.channels);
        EXPECT_EQ(format.sampleRate, file.sampleRate);
        EXPECT_EQ(format.lengthFrames, file.frames);
        const std::vector<float> decoded = ReadAll(*source.value);
        EXPECT_EQ(decoded.size(), file.frames * file.channels);
        EXPECT_EQ(source.value->Read(nullptr, 0), 0U);
        if (decoded.size() != file.frames * file.channels)
            continue;
        const std::vector<float> noise = Noise(file.frames, file.channels);
        if (file.samples == Samples::Exact) {
            EXPECT_LE(Difference(noise, decoded), 1.01f / 32768.0f);
        }
        constexpr std::uint32_t LowFrequencies = 3; // keeps those alone
        for (std::uint32_t i = 0; i < file.channels && file.samples == Samples::Alike; ++i)
            EXPECT_TRUE(i == LowFrequencies || Likeness(noise, i, decoded, i, file.channels) > 0.8)
                << i;
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
    using Pair = std::pair<std::size_t, std::size_t>;
    constexpr std::array Pairs = {Pair(0, 0), Pair(1, 2), Pair(2, 1), Pair(4, 3), Pair(5, 4)};
    for (const auto& [place, channel] : Pairs) {
        EXPECT_GT(Likeness(noise, channel, decoded, place, Surround.channels), 0.8) << place;
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
