// What BASS_ChannelGetData gives of the sound that is heard.

#include "EngineTest.h"

#include <cmath>
#include <numbers>

namespace velmo::engine::test {

namespace {

class HeardData : public EngineTest
{
protected:
    /// Opens a file, plays it until `bytes` have been heard and pauses it; gives the channel.
    static DWORD PausedAt(const std::string& file, QWORD bytes, DWORD flags = 0)
    {
        const DWORD channel = OpenStream(file, flags);
        EXPECT_TRUE(BASS_ChannelPlay(channel, 0));
        EXPECT_TRUE(
            Until([=] { return BASS_ChannelGetPosition(channel, BASS_POS_BYTE) >= bytes; }));
        EXPECT_TRUE(BASS_ChannelPause(channel));
        AwaitStandstill(channel);
        return channel;
    }
};

std::vector<float> Samples(DWORD channel, std::size_t count)
{
    std::vector<float> samples(count, 99.0f);
    const auto bytes = static_cast<DWORD>(count * sizeof(float));
    const DWORD got = BASS_ChannelGetData(channel, samples.data(), bytes | BASS_DATA_FLOAT);
    EXPECT_LE(got, bytes);
    samples.resize(std::min(got, bytes) / sizeof(float));
    return samples;
}

/// The samples of `file`, of `channels` channels, from `frame` on, as they are to be heard.
std::vector<float> Expected(const std::vector<std::int16_t>& file,
                            std::size_t at,
                            std::size_t count)
{
    std::vector<float> samples;
    for (std::size_t i = at; i < at + count; ++i)
        samples.push_back(static_cast<float>(file[i]) / 32768);
    return samples;
}

} // namespace

TEST_F(HeardData, SineOfFullScaleIsOneInItsBin)
{
    constexpr std::size_t Bin = 100;
    std::vector<std::int16_t> sine(44100);
    for (std::size_t i = 0; i < sine.size(); ++i)
        sine[i] = static_cast<std::int16_t>(std::lround(
            32767 * std::sin(2 * std::numbers::pi * Bin / 2048 * static_cast<double>(i))));
    Init("null");
    const DWORD channel = PausedAt(WriteWav("sine.wav", sine, 44100, 1), 20000);
    std::vector<float> spectrum(1025, 99.0f);
    ASSERT_EQ(BASS_ChannelGetData(channel, spectrum.data(), BASS_DATA_FFT2048), 4096U);
    EXPECT_EQ(spectrum.back(), 99.0f);
    for (std::size_t i = 0; i < 1024; ++i) {
        const double expected = i == Bin ? 1 : i == Bin - 1 || i == Bin + 1 ? 0.5 : 0;
        EXPECT_NEAR(spectrum[i], expected, 0.005) << i;
    }
}

TEST_F(HeardData, SamplesAreThoseAtThePositionAndStayWithAPause)
{
    constexpr std::size_t Frames = 100;
    const std::vector<std::int16_t> noise = Noise(3UL * 44100);
    Init("null");
    for (const std::uint32_t channels : {1U, 2U, 3U}) {
        SCOPED_TRACE(channels);
        const DWORD channel =
            PausedAt(WriteWav("noise.wav", noise, 44100, channels), QWORD{channels} * 2 * 8820);
        const QWORD position = BASS_ChannelGetPosition(channel, BASS_POS_BYTE);
        const std::size_t frame = position / (QWORD{channels} * 2);
        // Everything that was mixed has been heard, so these are the frames before the position.
        const std::vector<float> samples = Samples(channel, Frames * channels);
        ASSERT_EQ(samples.size(), Frames * channels);
        if (channels < 3) {
            EXPECT_EQ(samples, Expected(noise, (frame - Frames) * channels, Frames * channels));
        } else {
            EXPECT_EQ(samples[2], 0.0f);
            EXPECT_NE(samples[0], 0.0f);
        }
        EXPECT_EQ(Samples(channel, Frames * channels), samples) << "looking takes nothing away";
        EXPECT_EQ(BASS_ChannelGetPosition(channel, BASS_POS_BYTE), position);
        // A seek is not heard before the channel plays again.
        ASSERT_TRUE(BASS_ChannelSetPosition(channel, 0, BASS_POS_BYTE));
        EXPECT_EQ(Samples(channel, Frames * channels), samples);
        ASSERT_TRUE(BASS_ChannelStop(channel));
        std::vector<float> untouched(Frames, 7.0f);
        EXPECT_EQ(BASS_ChannelGetData(channel, untouched.data(), 400 | BASS_DATA_FLOAT), ~0U);
        EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_NOPLAY);
        EXPECT_EQ(untouched, std::vector<float>(Frames, 7.0f));
    }
}

TEST_F(HeardData, BeforeTheBeginningIsSilenceAndAtTheEndIsLess)
{
    constexpr std::size_t Frames = 13230;
    const std::vector<std::int16_t> noise = Noise(2 * Frames);
    Init("null");
    const DWORD channel = OpenStream(WriteWav("noise.wav", noise));
    ASSERT_TRUE(BASS_ChannelPlay(channel, 0));
    const std::vector<float> first = Samples(channel, 2 * Frames);
    EXPECT_EQ(first.size(), 2 * Frames);
    bool shorter = false;
    ASSERT_TRUE(Until([&] {
        // 0.2 s, asked for all the time: less is left at last.
        std::vector<float> rest(std::size_t{2} * 8820);
        const DWORD bytes = BASS_ChannelGetData(
            channel, rest.data(), static_cast<DWORD>(rest.size() * 4) | BASS_DATA_FLOAT);
        if (bytes < rest.size() * 4) {
            rest.resize(bytes / 4);
            EXPECT_EQ(rest, Expected(noise, noise.size() - rest.size(), rest.size()));
            shorter = shorter || !rest.empty();
        }
        return BASS_ChannelIsActive(channel) == BASS_ACTIVE_STOPPED;
    }));
    EXPECT_TRUE(shorter);
}

TEST_F(HeardData, OtherQuestionsAreRefused)
{
    Init("null");
    const DWORD channel = PausedAt(WriteWav("noise.wav", Noise(2UL * 44100)), 4000);
    std::vector<float> buffer(1024, 7.0f);
    for (const DWORD length : {0U, 400U, 0x80000000U, 0x80000002U, 0x80000004U, 0xC0000010U}) {
        EXPECT_EQ(BASS_ChannelGetData(channel, buffer.data(), length), ~0U) << length;
        EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_ILLPARAM) << length;
    }
    EXPECT_EQ(BASS_ChannelGetData(channel, nullptr, BASS_DATA_FFT2048), ~0U);
    EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_ILLPARAM);
    EXPECT_EQ(BASS_ChannelGetData(channel, buffer.data(), DWORD{BASS_DATA_FLOAT}), 0U);
    EXPECT_EQ(BASS_ChannelGetData(channel, buffer.data(), 15U | BASS_DATA_FLOAT), 8U)
        << "whole frames";
    EXPECT_EQ(buffer[2], 7.0f);
    // More than is kept.
    std::vector<float> much(std::size_t{2} * 88200);
    const auto bytes = static_cast<DWORD>(much.size() * 4);
    EXPECT_EQ(BASS_ChannelGetData(channel, much.data(), bytes | BASS_DATA_FLOAT), bytes);
    EXPECT_EQ(much.front(), 0.0f) << "before the file's beginning";
    EXPECT_NE(much.back(), 0.0f);
}

} // namespace velmo::engine::test
