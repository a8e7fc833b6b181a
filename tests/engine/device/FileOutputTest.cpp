// The outputs that write files: their headers, and what they do where they cannot write.

#include "device/WavHeader.h"
#include "engine/abi/EngineTest.h"
#include "support/LittleEndian.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace velmo::engine::test {
namespace {

using velmo::test::LittleEndian;

class FileOutput : public EngineTest
{
protected:
    /// Makes a pipe and opens its end for reading.
    int OpenPipe() const
    {
        EXPECT_EQ(mkfifo(m_pipe.c_str(), 0600), 0);
        return open(m_pipe.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    }

    const std::string m_pipe = File("pipe");
    const std::string m_long = WriteWav("long.wav", Noise(2'000'000));
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

std::string Header(const FormatCase& c, std::uint64_t frames)
{
    const std::uint32_t bits = 8 * c.sampleBytes;
    const std::uint32_t frameBytes = c.channels * c.sampleBytes;
    std::string format = LittleEndian(2, {c.speakers != 0 ? 0xFFFE : c.tag, c.channels})
                         + LittleEndian(4, {48000, 48000 * frameBytes})
                         + LittleEndian(2, {frameBytes, bits});
    if (c.speakers != 0)
        format += LittleEndian(2, {22, bits}) + LittleEndian(4, {c.speakers, c.tag, 0x00100000})
                  + LittleEndian(8, {0x719B3800AA000080});
    else if (c.tag == 3)
        format += LittleEndian(2, {0});
    std::string rest = "WAVEfmt " + LittleEndian(4, {format.size()}) + format;
    if (c.tag == 3)
        rest += "fact" + LittleEndian(4, {4, frames});
    rest += "data" + LittleEndian(4, {frames * frameBytes});
    return "RIFF" + LittleEndian(4, {rest.size() + frames * frameBytes}) + rest;
}

TEST_F(FileOutput, HeaderTellsTheFormatAndTheSizesOfWhatWasWritten)
{
    const std::string file = WriteWav("a.wav", Noise(2UL * 5001), 48000);
    for (const FormatCase& c : {
             FormatCase{"wav-fast:", "",    1, 2, 2, 0    },
             FormatCase{"wav-fast:", "f32", 3, 4, 2, 0    },
             FormatCase{"wav:",      "",    1, 2, 2, 0    },
             FormatCase{"wav-fast:", "",    1, 2, 6, 0x03F},
             FormatCase{"wav:",      "f32", 3, 4, 8, 0x63F}
    }) {
        SetVariable("VELMO_WAV_FORMAT", c.format);
        SetVariable("VELMO_WAV_CHANNELS", std::to_string(c.channels));
        Init(c.output + File("out.wav"), 48000, BASS_DEVICE_SPEAKERS);
        PlayToEnd(OpenStream(file));
        const std::uint64_t frames = Rendered<char>().size() / c.channels / c.sampleBytes;
        const std::string header = Header(c, frames);
        EXPECT_EQ(m_directory.Read("out.wav").substr(0, header.size()), header)
            << c.output << c.format << c.channels;
    }
}

TEST_F(FileOutput, WhatCannotBeCreatedOrIsNotKnownCannotBeOpened)
{
    close(OpenPipe()); // one that nobody reads
    for (const std::string& value : {"wav:" + m_pipe,
                                     "wav-fast:" + m_pipe,
                                     "wav:" + File("none/out.wav"),
                                     "wav-fast:" + File("none/out.wav"),
                                     "wav:" + File(""),
                                     std::string("alsa"),
                                     std::string("Null"),
                                     std::string("wav"),
                                     std::string("wav:")}) {
        SetVariable("VELMO_AUDIO", value);
        EXPECT_EQ(Code(BASS_Init(-1, 44100, 0, nullptr, nullptr)), BASS_ERROR_DEVICE) << value;
    }
}

TEST_F(FileOutput, FailedWriteEndsTheFileButNeitherThePlayingNorTheProcess)
{
    const int reader = OpenPipe();
    Init("wav-fast:" + m_pipe);
    close(reader);
    PlayToEnd(OpenStream(m_long));
    BASS_Free();
    Init("wav-fast:/dev/full");
    PlayToEnd(OpenStream(m_long));
}

TEST_F(FileOutput, PipeGetsTheSoundWithUnknownSizesAndAHungReaderDoesNotHoldUpClose)
{
    const int reader = OpenPipe();
    Init("wav-fast:" + m_pipe);
    BASS_ChannelPlay(OpenStream(m_long), 0);
    // One buffer: more than a pipe holds.
    EXPECT_TRUE(Until([] { return Statistics().rendered >= 32'768; }));
    BASS_Free();
    std::string bytes(48, ' ');
    EXPECT_EQ(read(reader, bytes.data(), bytes.size()), 48);
    const std::string unknown = LittleEndian(4, {WavSizeUnknown});
    EXPECT_EQ(bytes.substr(4, 4), unknown);
    EXPECT_EQ(bytes.substr(40), unknown + m_directory.Read("long.wav").substr(44, 4));
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
} // namespace velmo::engine::test
