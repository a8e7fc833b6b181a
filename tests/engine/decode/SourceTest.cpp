/// Every decoder by the same rules: exact length, exact seek, exact end.
#include "FileCases.h"
#include "OpenTestFile.h"

#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <span>

namespace velmo::test {
namespace {

using engine::SourceKind;

float Difference(std::span<const float> a, std::span<const float> b)
{
    float most = 0;
    for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i)
        most = std::max(most, std::abs(a[i] - b[i]));
    return most;
}

/// How much of the original's channel is in what was decoded: 1 is all of it.
double Likeness(std::span<const float> original,
                std::span<const float> decoded,
                std::size_t channel,
                std::size_t channels)
{
    double product = 0;
    double energy = 0;
    for (std::size_t i = channel; i < original.size(); i += channels) {
        product += double{original[i]} * decoded[i];
        energy += double{original[i]} * original[i];
    }
    return product / energy;
}

class EveryFormat : public testing::Test
{
protected:
    static void ExpectSound(const FileCase& file, const std::vector<float>& decoded)
    {
        const std::uint32_t channels = file.shape.channels;
        ASSERT_EQ(decoded.size(), file.shape.frames * channels);
        const std::vector<float> noise = Noise(file.shape.frames, channels);
        if (file.samples == Samples::Exact) {
            EXPECT_LE(Difference(noise, decoded), 1.01f / 32768.0f);
        }
        constexpr std::uint32_t LowFrequencies = 3; // keeps those alone
        for (std::uint32_t i = 0; i < channels && file.samples == Samples::Alike; ++i)
            EXPECT_TRUE(i == LowFrequencies || Likeness(noise, decoded, i, channels) > 0.8) << i;
    }

    static void ExpectSeeks(const FileCase& file,
                            engine::Source& source,
                            const std::vector<float>& straight)
    {
        const std::size_t frames = file.shape.frames;
        for (const std::size_t target : {frames / 2,
                                         std::size_t{0},
                                         std::size_t{1},
                                         std::size_t{4000},
                                         frames - 1,
                                         frames / 3}) {
            SCOPED_TRACE(target);
            ASSERT_TRUE(source.Seek(target));
            const std::vector<float> rest = ReadAll(source);
            const auto wanted = std::span(straight).subspan(target * file.shape.channels);
            ASSERT_EQ(rest.size(), wanted.size());
            // A note of a module that sounds at the target begins softly.
            const std::size_t note = file.kind == SourceKind::Music ? 8000 : 0;
            const std::size_t begin = std::min(note, rest.size());
            EXPECT_LE(Difference(std::span(rest).subspan(begin), wanted.subspan(begin)),
                      file.seekDifference);
        }
        ASSERT_TRUE(source.Seek(frames));
        EXPECT_TRUE(ReadAll(source).empty());
        EXPECT_FALSE(source.Seek(frames + 1));
    }

    TempDir m_folder;
};

TEST_F(EveryFormat, TellsItsShapeGivesExactlyItsLengthAndSeeksToTheVeryFrame)
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
        EXPECT_EQ(format.channels, file.shape.channels);
        EXPECT_EQ(format.sampleRate, file.shape.sampleRate);
        EXPECT_EQ(format.lengthFrames, file.shape.frames);
        const std::vector<float> decoded = ReadAll(*source.value);
        ExpectSound(file, decoded);
        if (HasFatalFailure())
            return;
        ExpectSeeks(file, *source.value, decoded);
    }
}

TEST_F(EveryFormat, JoinedMpegFilesPlayToTheEndOfTheLast)
{
    const Bytes mp3 = Encode("libmp3lame -q:a 4", ".mp3", Stereo);
    const auto source = OpenFile(m_folder.Write("file", mp3 + mp3), SourceKind::Stream);
    ASSERT_EQ(source.error, 0);
    const std::uint64_t frames = source.value->Format().lengthFrames;
    EXPECT_GE(frames, 2 * Stereo.frames);
    EXPECT_LE(frames, 2 * Stereo.frames + std::uint64_t{8} * 1152) << "both keep their padding";
    EXPECT_EQ(ReadAll(*source.value).size(), frames * 2);
}

TEST_F(EveryFormat, ModulesHaveTheDevicesRate)
{
    const std::string path = m_folder.Write("song", MakeModules().at("mod"));
    const auto source = OpenFile(path, SourceKind::Music, 48000);
    ASSERT_EQ(source.error, 0);
    EXPECT_EQ(source.value->Format().sampleRate, 48000U);
    EXPECT_EQ(source.value->Format().lengthFrames, 737280U);
    EXPECT_GT(std::ranges::max(ReadAll(*source.value)), 0.1f);
}

} // namespace
} // namespace velmo::test
