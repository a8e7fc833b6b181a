#include "Environment.h"
#include "FakeRenderer.h"

#include "device/DeviceControl.h"
#include "device/WavHeader.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <string>
#include <string_view>

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
    /// Makes a pipe and opens its end for reading.
    int OpenPipe() const
    {
        EXPECT_EQ(mkfifo(m_path.c_str(), 0600), 0);
        return open(m_path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    }

    test::TempDir m_directory;
    const std::string m_path = m_directory("out.wav");
    FakeRenderer m_renderer;
    DeviceControl m_control{m_renderer};
};

struct FormatCase
{
    const char* output;
    const char* format;
    std::uint32_t tag;
    std::uint32_t sampleBytes;
    std::uint32_t channels;
    std::uint32_t speakers; ///< the mask of an extended header; 0: a plain one
};

std::string Number(std::uint64_t value, unsigned bytes)
{
    std::string number;
    for (unsigned i = 0; i < bytes; ++i)
        number += static_cast<char>(value >> (8 * i) & 0xFF);
    return number;
}

std::string Header(const FormatCase& c, std::uint64_t frames)
{
    const std::uint32_t bits = 8 * c.sampleBytes;
    const std::uint32_t frameBytes = c.channels * c.sampleBytes;
    std::string format = Number(c.speakers != 0 ? 0xFFFE : c.tag, 2) + Number(c.channels, 2)
                         + Number(48000, 4) + Number(48000 * frameBytes, 4) + Number(frameBytes, 2)
                         + Number(bits, 2);
    if (c.speakers != 0)
        format += Number(22, 2) + Number(bits, 2) + Number(c.speakers, 4) + Number(c.tag, 4)
                  + Number(0x00100000, 4) + Number(0x719B3800AA000080, 8);
    else if (c.tag == 3)
        format += Number(0, 2);
    std::string rest = "WAVEfmt " + Number(format.size(), 4) + format;
    if (c.tag == 3)
        rest += "fact" + Number(4, 4) + Number(frames, 4);
    rest += "data" + Number(frames * frameBytes, 4);
    return "RIFF" + Number(rest.size() + frames * frameBytes, 4) + rest;
}

std::string Samples(const FormatCase& c, std::uint64_t frames)
{
    std::string samples;
    for (std::uint64_t i = 0; i < c.channels * frames; ++i) {
        const float sample = FakeRenderer::Sample(i / c.channels, i % c.channels);
        const float limited = std::min(sample * 32768, 32767.0f);
        samples += c.tag == 3 ? Number(std::bit_cast<std::uint32_t>(sample), 4)
                              : Number(static_cast<std::uint16_t>(static_cast<int>(limited)), 2);
    }
    return samples;
}

TEST_F(FileOutput, FileHoldsEveryFrameInEitherFormat)
{
    for (const FormatCase& c : {
             FormatCase{"wav-fast:", "",    1, 2, 2, 0    },
             FormatCase{"wav-fast:", "f32", 3, 4, 2, 0    },
             FormatCase{"wav:",      "",    1, 2, 2, 0    },
             FormatCase{"wav-fast:", "",    1, 2, 6, 0x03F},
             FormatCase{"wav:",      "f32", 3, 4, 8, 0x63F}
    }) {
        const bool isFast = c.output == std::string_view("wav-fast:");
        const Environment audio("VELMO_AUDIO", c.output + m_path);
        const Environment format("VELMO_WAV_FORMAT", c.format);
        const Environment channels("VELMO_WAV_CHANNELS", std::to_string(c.channels));
        FakeRenderer ours(c.channels);
        DeviceControl output(ours);
        ASSERT_EQ(output.Open({.sampleRate = 48000, .allSpeakers = true}), DeviceError::None);
        EXPECT_EQ(output.Description().channels, c.channels);
        if (isFast)
            ours.SupplyUpTo(100'003);
        output.SetRunning(true);
        ASSERT_TRUE(ours.AwaitFrames(isFast ? 100'003 : 4000));
        output.Close();
        EXPECT_TRUE(m_directory.Read("out.wav")
                    == Header(c, ours.Frames()) + Samples(c, ours.Frames()))
            << c.output << c.format << c.channels;
    }
}

TEST_F(FileOutput, FastRendersWhatIsReadyAndNoMore)
{
    const Environment audio("VELMO_AUDIO", "wav-fast:" + m_path);
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

TEST_F(FileOutput, WhatCannotBeCreatedOrIsNotKnownCannotBeOpened)
{
    close(OpenPipe()); // one that nobody reads
    const std::string none = m_directory("none/out.wav");
    for (const std::string& value : {"wav:" + m_path,
                                     "wav-fast:" + m_path,
                                     "wav:" + none,
                                     "wav-fast:" + none,
                                     "wav:" + m_directory(),
                                     std::string("alsa"),
                                     std::string("Null"),
                                     std::string("wav"),
                                     std::string("wav:")}) {
        const Environment audio("VELMO_AUDIO", value);
        EXPECT_EQ(m_control.Open({}), DeviceError::CannotOpen) << value;
        m_control.SetRunning(true);
        EXPECT_EQ(m_control.RenderedFrames(), 0u);
    }
}

TEST_F(FileOutput, FailedWriteEndsTheFileButNeitherThePlayingNorTheProcess)
{
    const int reader = OpenPipe();
    const auto play = [&](const std::string& path, const auto& spoil) {
        const Environment audio("VELMO_AUDIO", "wav-fast:" + path);
        ASSERT_EQ(m_control.Open({}), DeviceError::None);
        spoil();
        m_control.SetRunning(true);
        EXPECT_TRUE(m_renderer.AwaitFrames(m_renderer.Frames() + 1'000'000));
        m_control.Close();
    };
    play("/dev/full", [] {});
    play(m_path, [=] { close(reader); });
}

TEST_F(FileOutput, PipeGetsTheSoundWithUnknownSizesAndAHungReaderDoesNotHoldUpClose)
{
    const int reader = OpenPipe();
    const Environment audio("VELMO_AUDIO", "wav-fast:" + m_path);
    ASSERT_EQ(m_control.Open({}), DeviceError::None);
    m_control.SetRunning(true);
    EXPECT_TRUE(m_renderer.AwaitFrames(32'768)); // one buffer: more than a pipe holds
    m_control.Close();
    std::string bytes(48, ' ');
    EXPECT_EQ(read(reader, bytes.data(), bytes.size()), 48);
    const std::string unknown = Number(WavSizeUnknown, 4);
    EXPECT_EQ(bytes.substr(4, 4), unknown);
    EXPECT_EQ(bytes.substr(40), unknown + Number(0x8000, 2) + Number(0x7FFF, 2));
    close(reader);
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
