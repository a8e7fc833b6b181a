// What BASS_ChannelGetData gives of the sound that is heard.

#include "EngineTest.h"
#include "LineEffect.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <utility>

namespace velmo::engine::test {

namespace {

class HeardData : public EngineTest
{
protected:
    /// Opens a file, plays it until `bytes` have been heard and pauses it; gives the channel.
    static DWORD PausedAt(const std::string& file, QWORD bytes)
    {
        const DWORD channel = OpenStream(file);
        EXPECT_TRUE(BASS_ChannelPlay(channel, 0));
        AwaitHeard(channel, bytes);
        EXPECT_TRUE(BASS_ChannelPause(channel));
        AwaitStandstill(channel);
        return channel;
    }
};

/// `count` samples, fewer if there aren't so many, none on failure.
std::vector<float> Samples(DWORD channel, std::size_t count)
{
    std::vector<float> samples(count, 99.0f);
    const auto bytes = static_cast<DWORD>(count * sizeof(float));
    const DWORD got = BASS_ChannelGetData(channel, samples.data(), bytes | BASS_DATA_FLOAT);
    samples.resize(got == ~0U ? 0 : got / sizeof(float));
    return samples;
}

/// The same of the file, from the sample `at` on.
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

TEST_F(HeardData, SpectrumTellsTheAmplitudesOfBothSidesTogether)
{
    // A constant and sines in the middles of bins: one on both sides, one on the left alone.
    std::vector<float> sound;
    for (int i = 0; i < 441000; ++i) {
        const double turn = 2 * std::numbers::pi / 2048 * i;
        const double both = 0.1 + 0.5 * std::sin(100 * turn);
        const double left = 0.4 * std::sin(900 * turn);
        sound.insert(sound.end(), {static_cast<float>(both + left), static_cast<float>(both)});
    }
    std::vector<float> expected(1025);
    constexpr std::pair<std::size_t, float> Magnitudes[] = {
        {0,   0.1f },
        {1,   0.1f },
        {99,  0.25f},
        {100, 0.5f },
        {101, 0.25f},
        {899, 0.1f },
        {900, 0.2f },
        {901, 0.1f }
    };
    for (const auto& [bin, magnitude] : Magnitudes)
        expected[bin] = magnitude;
    BASS_RegisterEffect(&LineTable);
    Init("null");
    const DWORD channel = PausedAt(WriteWav("sines.wav", sound), 20000);
    std::vector<float> spectrum(expected.size());
    ASSERT_EQ(BASS_ChannelGetData(channel, spectrum.data(), BASS_DATA_FFT2048), 4096U);
    EXPECT_THAT(spectrum, testing::Pointwise(testing::FloatNear(1e-4f), expected));

    const Line infinite = {std::numeric_limits<float>::infinity(), 0};
    EXPECT_TRUE(BASS_FXSetParameters(BASS_ChannelSetFX(channel, LineType, 0), &infinite));
    EXPECT_TRUE(BASS_ChannelPlay(channel, 0));
    AwaitHeard(channel, Heard(channel) + 20000);
    EXPECT_EQ(BASS_ChannelGetData(channel, spectrum.data(), BASS_DATA_FFT2048), 4096U);
    EXPECT_EQ(spectrum, std::vector<float>(1025)) << "where a sample is no number";
}

TEST_F(HeardData, SamplesAreThoseAtThePositionAndStayWithAPause)
{
    const std::vector<std::int16_t> noise = Noise(30UL * 44100);
    Init("null");
    for (const std::uint32_t channels : {1U, 2U, 3U}) {
        SCOPED_TRACE(channels);
        const std::size_t count = std::size_t{100} * channels;
        const DWORD channel =
            PausedAt(WriteWav("noise.wav", noise, 44100, channels), QWORD{channels} * 2 * 8820);
        const QWORD position = Heard(channel);
        // Everything that was mixed has been heard, so these are the frames before the position.
        const std::vector<float> samples = Samples(channel, count);
        ASSERT_EQ(samples.size(), count);
        if (channels < 3) {
            EXPECT_EQ(samples, Expected(noise, position / 2 - count, count));
        } else {
            EXPECT_EQ(samples[2], 0.0f);
            EXPECT_NE(samples[0], 0.0f);
        }
        EXPECT_EQ(Samples(channel, count), samples) << "looking takes nothing away";
        EXPECT_EQ(Heard(channel), position);
        // A seek is not heard before the channel plays again.
        ASSERT_TRUE(BASS_ChannelSetPosition(channel, 0, BASS_POS_BYTE));
        EXPECT_EQ(Samples(channel, count), samples);
        ASSERT_TRUE(BASS_ChannelStop(channel));
        float untouched = 7;
        EXPECT_EQ(Code(BASS_ChannelGetData(channel, &untouched, 4 | BASS_DATA_FLOAT) != ~0U),
                  BASS_ERROR_NOPLAY);
        EXPECT_EQ(untouched, 7);
    }
}

TEST_F(HeardData, BeforeTheBeginningIsSilenceAndAtTheEndIsLess)
{
    constexpr std::size_t Frames = 13230;
    const std::vector<std::int16_t> noise = Noise(2 * Frames);
    Init("null");
    const DWORD channel = OpenStream(WriteWav("noise.wav", noise));
    ASSERT_TRUE(BASS_ChannelPlay(channel, 0));
    EXPECT_EQ(Samples(channel, 2 * Frames).size(), 2 * Frames);
    bool shorter = false;
    ASSERT_TRUE(Until([&] {
        // 0.2 s, asked for all the time: less is left at last. Who comes too late looks once more.
        constexpr std::size_t Count = 2 * 8820;
        const std::vector<float> rest = Samples(channel, Count);
        if (rest.size() < Count) {
            EXPECT_EQ(rest, Expected(noise, noise.size() - rest.size(), rest.size()));
            shorter = shorter || !rest.empty();
        }
        const bool ended = BASS_ChannelIsActive(channel) == BASS_ACTIVE_STOPPED;
        if (ended && !shorter)
            BASS_ChannelPlay(channel, 0);
        return ended && shorter;
    }));
}

TEST_F(HeardData, GivesWholeFramesAndNoMoreThanIsKeptAndRefusesOtherQuestions)
{
    Init("null");
    const DWORD channel = PausedAt(WriteWav("noise.wav", Noise(2UL * 441000)), 4000);
    std::vector<float> buffer(1024, 7.0f);
    const auto get = [=](void* out, DWORD length) {
        return BASS_ChannelGetData(channel, out, length);
    };
    for (const DWORD length : {0U, 400U, 0x80000000U, 0x80000002U, 0x80000004U, 0xC0000010U})
        EXPECT_EQ(Code(get(buffer.data(), length) != ~0U), BASS_ERROR_ILLPARAM) << length;
    EXPECT_EQ(Code(get(nullptr, BASS_DATA_FFT2048) != ~0U), BASS_ERROR_ILLPARAM);
    EXPECT_EQ(get(buffer.data(), DWORD{BASS_DATA_FLOAT}), 0U);
    EXPECT_EQ(get(buffer.data(), 15U | BASS_DATA_FLOAT), 8U);
    EXPECT_EQ(buffer[2], 7.0f);
    const std::vector<float> much = Samples(channel, std::size_t{2} * 88200);
    ASSERT_EQ(much.size(), 2U * 88200);
    EXPECT_EQ(much.front(), 0.0f) << "before the file's beginning";
    EXPECT_NE(much.back(), 0.0f);
}

} // namespace velmo::engine::test
