// What comes out of the output, sample for sample.

#include "EngineTest.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numbers>
#include <span>

namespace velmo::engine::test {

namespace {

class Playback : public EngineTest
{};

std::vector<std::int16_t> BothSides(const std::vector<std::int16_t>& mono)
{
    std::vector<std::int16_t> stereo;
    for (const std::int16_t sample : mono)
        stereo.insert(stereo.end(), {sample, sample});
    return stereo;
}

std::vector<std::int16_t> Sine(std::size_t frames, double rate, double frequency)
{
    std::vector<std::int16_t> sine;
    for (std::size_t i = 0; i < frames; ++i) {
        const double phase = 2 * std::numbers::pi * frequency * static_cast<double>(i) / rate;
        sine.push_back(static_cast<std::int16_t>(std::lround(16000 * std::sin(phase))));
    }
    return sine;
}

/// In dB, what of `samples`, one side of a stereo block, is the best-fitting sine of that frequency
/// against what is not.
double SineToRest(const std::vector<float>& samples, double rate, double frequency)
{
    double sinPart = 0;
    double cosPart = 0;
    double power = 0;
    const std::size_t frames = samples.size() / 2;
    for (std::size_t i = 0; i < frames; ++i) {
        const double phase = 2 * std::numbers::pi * frequency * static_cast<double>(i) / rate;
        sinPart += samples[2 * i] * std::sin(phase);
        cosPart += samples[2 * i] * std::cos(phase);
        power += static_cast<double>(samples[2 * i]) * samples[2 * i];
    }
    const double sine = 2 * (sinPart * sinPart + cosPart * cosPart) / static_cast<double>(frames);
    return 10 * std::log10(sine / std::max(power - sine, 1e-30));
}

constexpr std::size_t FadeFrames = 220; ///< 5 ms

/// How many frames of `out` are softer than in `source`; all others have to be the same, and none
/// may be missing.
std::size_t SoftenedFrames(const std::vector<float>& out, std::span<const std::int16_t> source)
{
    EXPECT_EQ(out.size(), source.size());
    std::size_t softened = 0;
    for (std::size_t i = 0; i < std::min(out.size(), source.size()); ++i) {
        const float sample = static_cast<float>(source[i]) / 32768;
        const float gain = out[i] / sample;
        EXPECT_TRUE(gain > 0 && gain <= 1) << i << ": " << gain;
        softened += i % 2 == 0 && out[i] != sample ? 1 : 0;
    }
    return softened;
}

/// `frames` without so many at the beginning and at the end.
std::vector<float> Without(const std::vector<float>& frames, std::size_t head, std::size_t tail)
{
    const std::size_t end = frames.size() - std::min(frames.size(), 2 * tail);
    return {frames.begin() + static_cast<long>(std::min(2 * head, end)),
            frames.begin() + static_cast<long>(end)};
}

} // namespace

TEST_F(Playback, SixteenBitSamplesComeOutAsTheyStandInTheFile)
{
    const std::vector<std::int16_t> stereo = Noise(2UL * 44100);
    const std::vector<std::int16_t> mono = Noise(30000);
    for (const DWORD bufferMs : {10U, 500U, 5000U}) {
        SCOPED_TRACE(bufferMs);
        BASS_SetConfig(BASS_CONFIG_BUFFER, bufferMs);
        InitFast();
        PlayToEnd(OpenStream(WriteWav("stereo.wav", stereo)));
        EXPECT_EQ(Rendered(), stereo);
        InitFast();
        PlayToEnd(OpenStream(WriteWav("mono.wav", mono, 44100, 1)));
        EXPECT_EQ(Rendered(), BothSides(mono));
    }
}

TEST_F(Playback, AnotherRateIsConvertedWithoutNoiseAndWithoutLoss)
{
    // An integer number of periods in both rates; the sine is kept as 16 bits, so the output is
    // looked at as floats of a sine that needs no rounding: 12 kHz at 48 kHz is 0, 1, 0, -1.
    std::vector<std::int16_t> quarter;
    for (std::size_t i = 0; i < 96000; ++i)
        quarter.push_back(static_cast<std::int16_t>(i % 4 == 1 ? 16384 : i % 4 == 3 ? -16384 : 0));
    SetVariable("VELMO_WAV_FORMAT", "f32");
    InitFast();
    PlayToEnd(OpenStream(WriteWav("rate.wav", quarter, 48000, 1)));
    std::vector<float> out = RenderedFloats();
    ASSERT_EQ(out.size(), 2U * 88200U);
    // Away from the ends, where the sine begins and stops.
    out = std::vector<float>(out.begin() + 2L * 4410, out.end() - 2L * 4410);
    EXPECT_GE(SineToRest(out, 44100, 12000), 110);
}

TEST_F(Playback, SeekLandsOnTheVerySample)
{
    const std::vector<std::int16_t> noise = Noise(2UL * 44100);
    const std::string file = WriteWav("noise.wav", noise);
    SetVariable("VELMO_WAV_FORMAT", "f32");
    for (const QWORD frame : {0U, 1U, 4711U, 44099U}) {
        SCOPED_TRACE(frame);
        InitFast();
        const DWORD channel = OpenStream(file);
        ASSERT_TRUE(BASS_ChannelSetPosition(channel, frame * 4 + 3, BASS_POS_BYTE));
        EXPECT_EQ(BASS_ChannelGetPosition(channel, BASS_POS_BYTE), frame * 4);
        PlayToEnd(channel);
        const std::size_t faded = frame == 0 ? 0 : std::min<std::size_t>(FadeFrames, 44100 - frame);
        EXPECT_EQ(SoftenedFrames(RenderedFloats(), std::span(noise).subspan(frame * 2)), faded);
    }
}

TEST_F(Playback, SeekInAFileOfAnotherRateKeepsTime)
{
    // The converted second half is the same as the half of the whole converted, but for the
    // filter's reach around the seam.
    const std::string file = WriteWav("sine.wav", Sine(48000, 48000, 441), 48000, 1);
    SetVariable("VELMO_WAV_FORMAT", "f32");
    InitFast();
    PlayToEnd(OpenStream(file));
    const std::vector<float> whole = RenderedFloats();
    InitFast();
    const DWORD channel = OpenStream(file);
    ASSERT_TRUE(BASS_ChannelSetPosition(channel, 48000, BASS_POS_BYTE));
    PlayToEnd(channel);
    EXPECT_EQ(BASS_ChannelGetPosition(channel, BASS_POS_BYTE), 48000U * 2);
    const std::vector<float> half = RenderedFloats();
    ASSERT_EQ(whole.size(), 2U * 44100U);
    ASSERT_EQ(half.size(), 2U * 22050U);
    double worst = 0;
    for (std::size_t i = 2000; i < half.size() - 2000; ++i)
        worst = std::max(worst, std::abs(static_cast<double>(half[i]) - whole[i + 44100]));
    EXPECT_LT(worst, 1e-5);
}

TEST_F(Playback, VolumeIsAFactorAndTheLogarithmicCurveItsSquare)
{
    struct Case
    {
        float volume;
        DWORD curve;
        float gain;
    };
    const std::vector<std::int16_t> noise = Noise(2UL * 5000);
    const std::string file = WriteWav("noise.wav", noise);
    SetVariable("VELMO_WAV_FORMAT", "f32");
    for (const Case& c : {
             Case{1,     0,          1      },
             {0.5f,  0,          0.5f   },
             {0.5f,  1,          0.25f  },
             {0.25f, 0xFFFFFFFF, 0.0625f},
             {0,     0,          0      }
    }) {
        SCOPED_TRACE(c.volume);
        BASS_SetConfig(BASS_CONFIG_CURVE_VOL, c.curve);
        InitFast();
        ASSERT_TRUE(BASS_SetVolume(c.volume));
        EXPECT_EQ(BASS_GetVolume(), c.volume);
        PlayToEnd(OpenStream(file));
        std::vector<float> expected;
        expected.reserve(noise.size());
        for (const std::int16_t sample : noise)
            expected.push_back(static_cast<float>(sample) / 32768.0f * c.gain);
        EXPECT_EQ(RenderedFloats(), expected);
    }
}

TEST_F(Playback, DeviceFlagsChangeTheFinalMix)
{
    const std::string file = WriteWav("pair.wav", {16384, 8192, -300, 100, 130, 0});
    SetVariable("VELMO_WAV_FORMAT", "f32");
    struct Case
    {
        DWORD flags;
        std::vector<float> expected; ///< in 1/32768
    };
    for (const Case& c : {
             Case{BASS_DEVICE_MONO | BASS_DEVICE_3D, {12288, 12288, -100, -100, 65, 65}},
             Case{BASS_DEVICE_8BITS,                 {16384, 8192, -256, 0, 256, 0}    }
    }) {
        SCOPED_TRACE(c.flags);
        InitFast(44100, c.flags);
        PlayToEnd(OpenStream(file));
        std::vector<float> out = RenderedFloats();
        for (float& sample : out)
            sample *= 32768;
        EXPECT_EQ(out, c.expected);
    }
}

TEST_F(Playback, MonoFlagMixesDownOnlyWithoutThe3dFlag)
{
    const std::string file = WriteWav("pair.wav", {1000, 3000, -2000, 0});
    struct Case
    {
        DWORD flags;
        DWORD chans;
        std::vector<std::int16_t> expected;
    };
    for (const Case& c : {
             Case{BASS_SAMPLE_MONO,                  1, {2000, 2000, -1000, -1000}},
             Case{BASS_SAMPLE_MONO | BASS_SAMPLE_3D, 2, {1000, 3000, -2000, 0}    }
    }) {
        InitFast();
        const DWORD channel = OpenStream(file, c.flags);
        BASS_CHANNELINFO info = {};
        ASSERT_TRUE(BASS_ChannelGetInfo(channel, &info));
        EXPECT_EQ(info.chans, c.chans);
        EXPECT_EQ(BASS_ChannelGetLength(channel, BASS_POS_BYTE), 2U * 2 * c.chans);
        PlayToEnd(channel);
        EXPECT_EQ(Rendered(), c.expected);
    }
}

TEST_F(Playback, TwoChannelsAddAndSaturate)
{
    constexpr std::size_t Frames = 30000;
    const std::vector<std::int16_t> loud(Frames * 2, 24576);
    const std::vector<std::int16_t> soft(Frames * 2, 16384);
    InitFast();
    const DWORD first = OpenStream(WriteWav("loud.wav", loud));
    const DWORD second = OpenStream(WriteWav("soft.wav", soft));
    ASSERT_TRUE(BASS_ChannelPlay(first, 1));
    PlayToEnd(second);
    ASSERT_TRUE(Until([=] { return BASS_ChannelIsActive(first) == BASS_ACTIVE_STOPPED; }));
    // When the second one joined the first is chance, even that it did; that nothing else may come
    // out is not.
    const std::vector<std::int16_t> out = Rendered();
    const auto alone =
        std::count(out.begin(), out.end(), 24576) + std::count(out.begin(), out.end(), 16384);
    const auto together = std::count(out.begin(), out.end(), 32767);
    EXPECT_EQ(static_cast<std::size_t>(alone + together), out.size());
    EXPECT_EQ(static_cast<std::size_t>(alone + 2 * together), 4 * Frames);
}

TEST_F(Playback, PauseLosesNoSample)
{
    const std::vector<std::int16_t> noise = Noise(2UL * 88200);
    const std::string file = WriteWav("noise.wav", noise);
    SetVariable("VELMO_WAV_FORMAT", "f32");
    Init("wav:" + File("out.wav").string());
    const DWORD channel = OpenStream(file);
    ASSERT_TRUE(BASS_ChannelPlay(channel, 1));
    for (const QWORD frame : {3000U, 30000U}) {
        ASSERT_TRUE(
            Until([=] { return BASS_ChannelGetPosition(channel, BASS_POS_BYTE) >= frame * 4; }));
        ASSERT_TRUE(BASS_ChannelPause(channel));
        EXPECT_EQ(BASS_ChannelIsActive(channel), DWORD{BASS_ACTIVE_PAUSED});
        EXPECT_LT(AwaitStandstill(channel), 88200U * 4);
        ASSERT_TRUE(BASS_ChannelPlay(channel, 0));
        EXPECT_EQ(BASS_ChannelIsActive(channel), DWORD{BASS_ACTIVE_PLAYING});
    }
    ASSERT_TRUE(Until([=] { return BASS_ChannelIsActive(channel) == BASS_ACTIVE_STOPPED; }));
    std::vector<float> out = RenderedFloats();
    // Silence of the pauses; the noise has no 0, nor has a fade.
    std::erase(out, 0.0f);
    EXPECT_EQ(SoftenedFrames(out, noise), 4 * FadeFrames);
}

TEST_F(Playback, StoppedOutputGoesOnWithTheNextPlay)
{
    const std::vector<std::int16_t> noise = Noise(2UL * 88200);
    Init("wav:" + File("out.wav").string());
    const DWORD channel = OpenStream(WriteWav("noise.wav", noise));
    ASSERT_TRUE(BASS_ChannelPlay(channel, 1));
    ASSERT_TRUE(Until([=] { return BASS_ChannelGetPosition(channel, BASS_POS_BYTE) > 4000; }));
    ASSERT_TRUE(BASS_Stop());
    EXPECT_LT(AwaitStandstill(channel), 88200U * 4);
    EXPECT_EQ(BASS_ChannelIsActive(channel), DWORD{BASS_ACTIVE_PLAYING});
    ASSERT_TRUE(BASS_ChannelPlay(channel, 0));
    ASSERT_TRUE(Until([=] { return BASS_ChannelIsActive(channel) == BASS_ACTIVE_STOPPED; }));
    std::vector<std::int16_t> out = Rendered();
    std::erase(out, 0); // the last block is filled up
    EXPECT_EQ(out, noise);
}

TEST_F(Playback, SeekDoesNotStartAStoppedOutput)
{
    Init("wav:" + File("out.wav").string());
    const DWORD channel = OpenStream(WriteWav("noise.wav", Noise(2UL * 88200)));
    ASSERT_TRUE(BASS_ChannelPlay(channel, 1));
    ASSERT_TRUE(Until([=] { return BASS_ChannelGetPosition(channel, BASS_POS_BYTE) > 4000; }));
    ASSERT_TRUE(BASS_Stop());
    AwaitStandstill(channel);
    ASSERT_TRUE(BASS_ChannelSetPosition(channel, 40000, BASS_POS_BYTE));
    EXPECT_EQ(AwaitStandstill(channel), 40000U);
    ASSERT_TRUE(BASS_ChannelPlay(channel, 0));
    EXPECT_TRUE(Until([=] { return BASS_ChannelGetPosition(channel, BASS_POS_BYTE) > 44000; }));
}

TEST_F(Playback, SeekWhilePlayingGoesOnWithTheVerySample)
{
    constexpr std::size_t Target = 70000;
    const std::vector<std::int16_t> noise = Noise(2UL * 88200);
    const std::string file = WriteWav("noise.wav", noise);
    const std::string paced = "wav:" + File("out.wav").string();
    const std::string fast = "wav-fast:" + File("out.wav").string();
    SetVariable("VELMO_WAV_FORMAT", "f32");
    for (const std::string& output : {paced, fast}) {
        SCOPED_TRACE(output);
        Init(output);
        const DWORD channel = OpenStream(file);
        ASSERT_TRUE(BASS_ChannelPlay(channel, 1));
        ASSERT_TRUE(Until([=] { return BASS_ChannelGetPosition(channel, BASS_POS_BYTE) > 4000; }));
        ASSERT_TRUE(BASS_ChannelSetPosition(channel, Target * 4, BASS_POS_BYTE));
        ASSERT_TRUE(Until([=] { return BASS_ChannelIsActive(channel) == BASS_ACTIVE_STOPPED; }));
        std::vector<float> out = RenderedFloats();
        if (output == paced)
            std::erase(out, 0.0f); // while the new place is decoded, and behind the end
        // What was left fades out, and what was sought fades in, one after the other or both at
        // once.
        const std::size_t rest = noise.size() - 2 * Target;
        ASSERT_GT(out.size(), rest);
        const std::vector<float> head(out.begin(), out.end() - static_cast<long>(rest));
        const std::vector<float> tail(out.end() - static_cast<long>(rest), out.end());
        const auto whole = std::span(noise);
        EXPECT_EQ(
            SoftenedFrames(Without(tail, FadeFrames, 0), whole.subspan(2 * (Target + FadeFrames))),
            0U);
        const std::size_t plain = head.size() / 2 - std::min(head.size() / 2, FadeFrames);
        EXPECT_EQ(SoftenedFrames(Without(head, 0, FadeFrames), whole.first(2 * plain)), 0U);
    }
}

} // namespace velmo::engine::test
