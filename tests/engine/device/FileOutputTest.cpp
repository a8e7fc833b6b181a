#include "Environment.h"
#include "FakeRenderer.h"

#include "device/DeviceControl.h"
#include "device/WavHeader.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace velmo::engine {
namespace {

using namespace std::chrono_literals;
using test::Environment;
using test::FakeRenderer;

class FileOutput : public testing::Test
{
protected:
    [[nodiscard]] std::string Path() const { return (m_directory / "out.wav").string(); }

    [[nodiscard]] std::vector<std::uint8_t> Bytes() const
    {
        std::ifstream file(Path(), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    velmo::test::TempDir m_temporary;
    std::filesystem::path m_directory = m_temporary();
    FakeRenderer m_renderer;
    DeviceControl m_control{m_renderer};
};

std::uint32_t Number(const std::vector<std::uint8_t>& bytes, std::size_t offset, std::size_t size)
{
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < size; ++i)
        number |= static_cast<std::uint32_t>(bytes.at(offset + i)) << (8 * i);
    return number;
}

std::string Text(const std::vector<std::uint8_t>& bytes, std::size_t offset)
{
    return {bytes.begin() + static_cast<std::ptrdiff_t>(offset),
            bytes.begin() + static_cast<std::ptrdiff_t>(offset) + 4};
}

struct FormatCase
{
    const char* output;
    std::optional<std::string> format;
    std::size_t headerBytes;
    std::uint32_t tag;
    std::uint32_t sampleBytes;
    std::uint32_t channels;
    std::uint32_t speakers; ///< the mask of an extended header; 0: a plain one
};

// NOLINTNEXTLINE(readability-function-size): a list of all fields; each check counts many times
void ExpectHeader(const std::vector<std::uint8_t>& bytes,
                  const FormatCase& expected,
                  std::uint64_t frames)
{
    const auto total = static_cast<std::uint32_t>(bytes.size());
    const std::uint32_t frameBytes = expected.channels * expected.sampleBytes;
    ASSERT_EQ(total, expected.headerBytes + frames * frameBytes);
    EXPECT_EQ(Text(bytes, 0), "RIFF");
    EXPECT_EQ(Number(bytes, 4, 4), total - 8);
    EXPECT_EQ(Text(bytes, 8), "WAVE");
    EXPECT_EQ(Text(bytes, 12), "fmt ");
    EXPECT_EQ(Number(bytes, 20, 2), expected.speakers == 0 ? expected.tag : 0xFFFE);
    EXPECT_EQ(Number(bytes, 22, 2), expected.channels);
    EXPECT_EQ(Number(bytes, 24, 4), 48000u);
    EXPECT_EQ(Number(bytes, 28, 4), 48000u * frameBytes);
    EXPECT_EQ(Number(bytes, 32, 2), frameBytes);
    EXPECT_EQ(Number(bytes, 34, 2), 8 * expected.sampleBytes);
    EXPECT_EQ(Text(bytes, expected.headerBytes - 8), "data");
    EXPECT_EQ(Number(bytes, expected.headerBytes - 4, 4), total - expected.headerBytes);
    if (expected.tag == 3) {
        EXPECT_EQ(Text(bytes, expected.headerBytes - 20), "fact");
        EXPECT_EQ(Number(bytes, expected.headerBytes - 12, 4), frames);
    }
    if (expected.speakers != 0) {
        EXPECT_EQ(Number(bytes, 16, 4), 40u);
        EXPECT_EQ(Number(bytes, 36, 2), 22u);
        EXPECT_EQ(Number(bytes, 38, 2), 8 * expected.sampleBytes);
        EXPECT_EQ(Number(bytes, 40, 4), expected.speakers);
        // {0000000N-0000-0010-8000-00AA00389B71}
        EXPECT_EQ(Number(bytes, 44, 4), expected.tag);
        EXPECT_EQ(Number(bytes, 48, 4), 0x00100000u);
        EXPECT_EQ(Number(bytes, 52, 4), 0xAA000080u);
        EXPECT_EQ(Number(bytes, 56, 4), 0x719B3800u);
    }
}

float SampleAt(const std::vector<std::uint8_t>& bytes,
               const FormatCase& format,
               std::uint64_t index)
{
    const std::uint32_t bits =
        Number(bytes, format.headerBytes + index * format.sampleBytes, format.sampleBytes);
    if (format.sampleBytes == 2)
        return static_cast<float>(static_cast<std::int16_t>(bits)) / 32768.0f;
    float sample = 0;
    std::memcpy(&sample, &bits, sizeof(sample));
    return sample;
}

TEST_F(FileOutput, FileHoldsEveryFrameInEitherFormat)
{
    const std::vector<FormatCase> cases{
        {"wav-fast:", std::nullopt, 44, 1, 2, 2, 0    },
        {"wav-fast:", "f32",        58, 3, 4, 2, 0    },
        {"wav:",      std::nullopt, 44, 1, 2, 2, 0    },
        {"wav:",      "f32",        58, 3, 4, 2, 0    },
        {"wav-fast:", std::nullopt, 68, 1, 2, 6, 0x03F},
        {"wav:",      "f32",        80, 3, 4, 8, 0x63F}
    };
    for (const FormatCase& one : cases) {
        const Environment audio("VELMO_AUDIO", one.output + Path());
        const Environment format("VELMO_WAV_FORMAT", one.format);
        const Environment channels("VELMO_WAV_CHANNELS", std::to_string(one.channels));
        FakeRenderer ours(one.channels);
        DeviceControl output(ours);
        ASSERT_EQ(output.Open({.sampleRate = 48000, .allSpeakers = true}), DeviceError::None);
        EXPECT_EQ(output.Description().channels, one.channels);
        if (std::string_view(one.output) == "wav-fast:")
            ours.SupplyUpTo(100'003);
        output.SetRunning(true);
        ASSERT_TRUE(ours.AwaitFrames(10'000));
        if (std::string_view(one.output) == "wav-fast:") {
            ASSERT_TRUE(ours.AwaitFrames(100'003));
        }
        output.Close();

        const std::vector<std::uint8_t> bytes = Bytes();
        ExpectHeader(bytes, one, ours.Frames());
        std::uint64_t wrong = 0;
        for (std::uint64_t i = 0; i < ours.Frames(); ++i) {
            // The largest right sample is full scale itself, which 16 bits just miss.
            const float largest = one.sampleBytes == 2 ? 32767.0f / 32768.0f : 1.0f;
            for (std::size_t channel = 0; channel < one.channels; ++channel)
                wrong += SampleAt(bytes, one, one.channels * i + channel)
                         != std::min(FakeRenderer::Sample(i, channel), largest);
        }
        EXPECT_EQ(wrong, 0u);
    }
}

TEST_F(FileOutput, FastRendersWhatIsReadyAndNoMore)
{
    const Environment audio("VELMO_AUDIO", "wav-fast:" + Path());
    m_renderer.SupplyUpTo(0);
    ASSERT_EQ(m_control.Open({}), DeviceError::None);
    m_renderer.SupplyUpTo(1);
    EXPECT_FALSE(m_renderer.Await([&] { return m_renderer.Frames() > 0; }, 50ms))
        << "not running yet";
    for (const std::uint64_t supplied : {1u, 4095u, 4096u, 20'000u, 20'001u}) {
        m_control.SetRunning(true);
        m_renderer.SupplyUpTo(supplied);
        ASSERT_TRUE(m_renderer.AwaitFrames(supplied));
        EXPECT_TRUE(m_renderer.Await([&] { return m_control.HeardFrames() == supplied; }));
        m_control.SetRunning(false);
    }
    EXPECT_FALSE(m_renderer.Overrun());
    m_control.Close();
    EXPECT_EQ(m_renderer.Frames(), 20'001u);
}

TEST_F(FileOutput, WhatCannotBeCreatedCannotBeOpened)
{
    const std::filesystem::path fifo = m_directory / "fifo";
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    for (const std::string& path :
         {(m_directory / "none" / "out.wav").string(), m_directory.string(), fifo.string()}) {
        for (const char* kind : {"wav:", "wav-fast:"}) {
            const Environment audio("VELMO_AUDIO", kind + path);
            EXPECT_EQ(m_control.Open({}), DeviceError::CannotOpen) << kind << path;
        }
    }
}

TEST_F(FileOutput, FailedWriteEndsTheFileButNotThePlaying)
{
    const Environment audio("VELMO_AUDIO", "wav-fast:/dev/full");
    ASSERT_EQ(m_control.Open({}), DeviceError::None);
    m_control.SetRunning(true);
    EXPECT_TRUE(m_renderer.AwaitFrames(1'000'000));
    m_control.Close();
}

TEST_F(FileOutput, PipeGetsTheSoundWithUnknownSizesAndAHungReaderDoesNotHoldUpClose)
{
    const std::filesystem::path fifo = m_directory / "fifo";
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    const int reader = open(fifo.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    ASSERT_GE(reader, 0);
    const Environment audio("VELMO_AUDIO", "wav-fast:" + fifo.string());
    ASSERT_EQ(m_control.Open({}), DeviceError::None);
    m_control.SetRunning(true);
    EXPECT_TRUE(m_renderer.AwaitFrames(32'768)); // one buffer: more than a pipe holds
    m_control.Close();
    std::vector<std::uint8_t> bytes(64);
    EXPECT_EQ(read(reader, bytes.data(), bytes.size()), 64);
    EXPECT_EQ(Number(bytes, 40, 4), WavSizeUnknown);
    EXPECT_EQ(Number(bytes, 44, 2), 0x8000u);
    close(reader);
}

TEST_F(FileOutput, ReaderThatGoesAwayEndsTheFileButNotTheProcess)
{
    const std::filesystem::path fifo = m_directory / "fifo";
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    const int reader = open(fifo.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    const Environment audio("VELMO_AUDIO", "wav-fast:" + fifo.string());
    ASSERT_EQ(m_control.Open({}), DeviceError::None);
    close(reader);
    m_control.SetRunning(true);
    EXPECT_TRUE(m_renderer.AwaitFrames(1'000'000));
}

TEST(WavSizes, AboveFourGibibytesTheyStayAtTheLargest)
{
    EXPECT_EQ(SizesOfWav(WavFormat::Pcm16, 2, 0xFFFFFFFFull - 36).riff, 0xFFFFFFFFu);
    const WavSizes sizes = SizesOfWav(WavFormat::Float32, 2, 0x123456789ull);
    EXPECT_EQ(sizes.riff, 0xFFFFFFFFu);
    EXPECT_EQ(sizes.data, 0xFFFFFFFFu);
    EXPECT_EQ(sizes.frames, 0x123456789ull / 8);
}

} // namespace
} // namespace velmo::engine
