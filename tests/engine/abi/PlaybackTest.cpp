// What comes out of the output, sample for sample.

#include "EngineTest.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <span>

namespace velmo::engine::test {

namespace {

using Playback = EngineTest;

constexpr std::size_t FadeFrames = 220; ///< 5 ms

/// How many frames of `out` are softer than in `source`; all others have to be the same, and none
/// may be missing.
std::size_t SoftenedFrames(std::span<const float> out, std::span<const std::int16_t> source)
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

} // namespace

TEST_F(Playback, SixteenBitSamplesComeOutAsTheyStandInTheFile)
{
    const std::vector<std::int16_t> noise = Noise(2UL * 44100);
    std::vector<std::int16_t> doubled;
    for (const std::int16_t sample : noise)
        doubled.insert(doubled.end(), {sample, sample});
    for (const DWORD bufferMs : {10U, 500U, 5000U}) {
        SCOPED_TRACE(bufferMs);
        BASS_SetConfig(BASS_CONFIG_BUFFER, bufferMs);
        InitFast();
        PlayToEnd(OpenStream(WriteWav("stereo.wav", noise)));
        EXPECT_EQ(Rendered(), noise);
        InitFast();
        PlayToEnd(OpenStream(WriteWav("mono.wav", noise, 44100, 1)));
        EXPECT_EQ(Rendered(), doubled);
    }
}

TEST_F(Playback, AnotherRateIsConvertedWithoutNoiseAndASeekInItKeepsTime)
{
    // A sine that needs no rounding: 12 kHz at 48 kHz is 0, 1, 0, -1.
    std::vector<std::int16_t> quarters(96007);
    for (std::size_t i = 0; i < quarters.size(); ++i)
        quarters[i] = static_cast<std::int16_t>(i % 4 == 1 ? 16384 : i % 4 == 3 ? -16384 : 0);
    const std::string file = WriteWav("rate.wav", quarters, 48000, 1);
    SetVariable("VELMO_WAV_FORMAT", "f32");
    InitFast();
    PlayToEnd(OpenStream(file));
    const std::vector<float> whole = Rendered<float>();
    ASSERT_EQ(whole.size(), 2U * 88206);
    double sine = 0;
    double rest = 0;
    for (std::size_t i = 4410; i < 88200 - 4410; ++i) { // away from the ends
        const double phase = 2 * std::numbers::pi * 12000 / 44100 * static_cast<double>(i);
        sine += std::pow(0.5 * std::sin(phase), 2);
        rest += std::pow(whole[2 * i] - 0.5 * std::sin(phase), 2);
    }
    EXPECT_GE(10 * std::log10(sine / rest), 110);

    InitFast();
    const DWORD channel = OpenStream(file);
    ASSERT_TRUE(BASS_ChannelSetPosition(channel, 96000, BASS_POS_BYTE));
    PlayToEnd(channel);
    EXPECT_EQ(Heard(channel), 2U * 96007);
    const std::vector<float> half = Rendered<float>();
    ASSERT_EQ(half.size(), 2U * 44106);
    float worst = 0;
    for (std::size_t i = 2000; i < half.size() - 2000; ++i) // but for the filter's reach
        worst = std::max(worst, std::abs(half[i] - whole[i + 88200]));
    EXPECT_LT(worst, 1e-5);
}

TEST_F(Playback, EveryRateGivesTheRoundedCountOfFrames)
{
    struct Case
    {
        std::uint32_t rate;
        DWORD deviceRate;
        std::uint32_t channels;
        std::size_t frames;
    };
    for (const Case& c : {
             Case{44100,  48000, 2, 100001},
             Case{96000,  44100, 6, 50003 },
             Case{8000,   48000, 1, 1     },
             Case{11025,  44100, 8, 3     },
             Case{192000, 44100, 2, 12345 }
    }) {
        const std::vector<std::int16_t> noise = Noise(c.frames * c.channels);
        Init("wav-fast:" + File("out.wav"), c.deviceRate);
        PlayToEnd(OpenStream(WriteWav("rate.wav", noise, c.rate, c.channels)));
        EXPECT_EQ(Rendered().size() / 2, (c.frames * c.deviceRate + c.rate / 2) / c.rate) << c.rate;
    }
}

TEST_F(Playback, VolumeAndFlagsChangeTheSamplesExactly)
{
    struct Case
    {
        DWORD deviceFlags;
        DWORD flags;
        float volume;
        DWORD curve;                 ///< not 0: the volume's square
        std::vector<float> expected; ///< in 1/32768
    };
    constexpr DWORD Mono3d = BASS_SAMPLE_MONO | BASS_SAMPLE_3D;
    const std::string file = WriteWav("pairs.wav", {16384, 8192, -300, 100, 130, 0});
    SetVariable("VELMO_WAV_FORMAT", "f32");
    for (const Case& c : {
             Case{0,                                 0,                1,     0,   {16384, 8192, -300, 100, 130, 0}      },
             Case{0,                                 0,                0.5f,  0,   {8192, 4096, -150, 50, 65, 0}         },
             Case{0,                                 0,                0.5f,  1,   {4096, 2048, -75, 25, 32.5f, 0}       },
             Case{0,                                 0,                0.25f, ~0U, {1024, 512, -18.75f, 6.25f, 8.125f, 0}},
             Case{0,                                 0,                0,     0,   {0, 0, 0, 0, 0, 0}                    },
             Case{BASS_DEVICE_MONO | BASS_DEVICE_3D, 0,                1,     0,   {12288, 12288, -100, -100, 65, 65}    },
             Case{BASS_DEVICE_8BITS,                 0,                1,     0,   {16384, 8192, -256, 0, 256, 0}        },
             Case{0,                                 BASS_SAMPLE_MONO, 1,     0,   {12288, 12288, -100, -100, 65, 65}    },
             Case{0,                                 Mono3d,           1,     0,   {16384, 8192, -300, 100, 130, 0}      }
    }) {
        BASS_SetConfig(BASS_CONFIG_CURVE_VOL, c.curve);
        InitFast(c.deviceFlags);
        ASSERT_TRUE(BASS_SetVolume(c.volume));
        PlayToEnd(OpenStream(file, c.flags));
        std::vector<float> out = Rendered<float>();
        for (float& sample : out)
            sample *= 32768;
        EXPECT_EQ(out, c.expected) << c.deviceFlags << ' ' << c.flags << ' ' << c.volume;
    }
}

TEST_F(Playback, PausesAndAStoppedOutputLoseNoSampleAndASeekStartsNone)
{
    const std::vector<std::int16_t> noise = Noise(2UL * 88200);
    const std::string file = WriteWav("noise.wav", noise);
    SetVariable("VELMO_WAV_FORMAT", "f32");
    InitPaced();
    const DWORD channel = OpenStream(file);
    for (const QWORD bytes : {12000U, 80000U}) {
        ASSERT_TRUE(BASS_ChannelPlay(channel, 0));
        AwaitHeard(channel, bytes);
        ASSERT_TRUE(BASS_ChannelPause(channel));
        EXPECT_EQ(BASS_ChannelIsActive(channel), DWORD{BASS_ACTIVE_PAUSED});
        const QWORD paused = AwaitStandstill(channel);
        ASSERT_TRUE(BASS_ChannelPlay(channel, 0));
        AwaitHeard(channel, paused + 12000);
        ASSERT_TRUE(BASS_Stop());
        EXPECT_LT(AwaitStandstill(channel), 88200U * 4);
        EXPECT_EQ(BASS_ChannelIsActive(channel), DWORD{BASS_ACTIVE_PLAYING});
    }
    ASSERT_TRUE(BASS_ChannelSetPosition(channel, 40000, BASS_POS_BYTE));
    EXPECT_EQ(AwaitStandstill(channel), 40000U);
    PlayToEnd(channel);
    std::vector<float> out = Rendered<float>();
    std::erase(out, 0.0f); // of pauses and the last block; the noise has none, nor has a fade
    const auto sought = std::span(noise).subspan(20000);
    ASSERT_GT(out.size(), sought.size());
    const auto head = std::span(out).first(out.size() - sought.size());
    EXPECT_EQ(SoftenedFrames(head, std::span(noise).first(head.size())), 4 * FadeFrames);
    EXPECT_EQ(SoftenedFrames(std::span(out).last(sought.size()), sought), FadeFrames);
}

TEST_F(Playback, SeekWhilePlayingGoesOnWithTheVerySample)
{
    constexpr std::size_t Target = 70000;
    constexpr std::size_t Fade = 2 * FadeFrames;
    const std::vector<std::int16_t> noise = Noise(2UL * 88200);
    const auto sought = std::span(noise).subspan(2 * Target);
    const std::string file = WriteWav("noise.wav", noise);
    SetVariable("VELMO_WAV_FORMAT", "f32");
    for (const bool paced : {true, false}) {
        SCOPED_TRACE(paced);
        if (paced)
            InitPaced();
        else
            InitFast();
        const DWORD channel = OpenStream(file);
        ASSERT_TRUE(BASS_ChannelPlay(channel, 1));
        AwaitHeard(channel, 4001);
        ASSERT_TRUE(BASS_ChannelSetPosition(channel, Target * 4 + 3, BASS_POS_BYTE));
        AwaitEnd(channel);
        std::vector<float> out = Rendered<float>();
        if (paced)
            std::erase(out, 0.0f); // while the new place is decoded, and behind the end
        // What was left fades out, and what was sought fades in, one after the other or both at
        // once.
        ASSERT_GT(out.size(), sought.size() + Fade);
        const auto head = std::span(out).first(out.size() - sought.size() - Fade);
        const auto tail = std::span(out).last(sought.size() - Fade);
        EXPECT_EQ(SoftenedFrames(head, std::span(noise).first(head.size())), 0U);
        EXPECT_EQ(SoftenedFrames(tail, sought.subspan(Fade)), 0U);
    }
}

TEST_F(Playback, IsHeardOnTheSpeakersThatAChannelAsksForAndElseInFront)
{
    constexpr std::int16_t L = 8000;
    constexpr std::int16_t R = -4000;
    constexpr std::int16_t M = 2000; // their mean
    constexpr DWORD All = BASS_DEVICE_SPEAKERS;
    constexpr DWORD AllMono = All | BASS_DEVICE_MONO;
    constexpr DWORD Left = BASS_SPEAKER_LEFT;
    constexpr DWORD Right = BASS_SPEAKER_RIGHT;
    constexpr DWORD Unknown = 0x5000000;
    struct Case
    {
        const char* speakers; ///< of the device
        DWORD deviceFlags;
        DWORD flags;
        std::vector<std::int16_t> frame;
    };
    std::vector<std::int16_t> sound;
    for (int i = 0; i < 10000; ++i)
        sound.insert(sound.end(), {L, R});
    const std::string file = WriteWav("a.wav", sound);
    for (const Case& c : {
             Case{"8", All,     BASS_SPEAKER_FRONT,                        {L, R, 0, 0, 0, 0, 0, 0}},
             Case{"8", All,     BASS_SPEAKER_CENLFE,                       {0, 0, L, R, 0, 0, 0, 0}},
             Case{"8", All,     BASS_SPEAKER_REAR | Left | Right,          {0, 0, 0, 0, L, R, 0, 0}},
             Case{"8", All,     BASS_SPEAKER_SIDE,                         {0, 0, 0, 0, 0, 0, L, R}},
             Case{"8", All,     BASS_SPEAKER_SIDE | Right,                 {0, 0, 0, 0, 0, 0, 0, M}},
             Case{"8", All,     BASS_SPEAKER_REAR | Left | BASS_SAMPLE_3D, {0, 0, 0, 0, M, 0, 0, 0}},
             Case{"8", All,     Unknown,                                   {L, R, 0, 0, 0, 0, 0, 0}},
             Case{"7", All,     BASS_SPEAKER_CENLFE | Right,               {0, 0, 0, M, 0, 0}      },
             Case{"6", All,     BASS_SPEAKER_SIDE | Left,                  {L, R, 0, 0, 0, 0}      },
             Case{"6", AllMono, BASS_SPEAKER_REAR,                         {0, 0, 0, 0, M, M}      },
             Case{"6", AllMono, BASS_SPEAKER_CENLFE,                       {0, 0, L, R, 0, 0}      },
             Case{"2", All,     BASS_SPEAKER_FRONT | Left,                 {M, 0}                  },
             Case{"2", All,     BASS_SPEAKER_REAR | Left,                  {L, R}                  },
             Case{"8", 0,       BASS_SPEAKER_FRONT | Left,                 {L, R}                  },
    }) {
        SetVariable("VELMO_WAV_CHANNELS", c.speakers);
        InitFast(c.deviceFlags);
        PlayToEnd(OpenStream(file, c.flags));
        std::vector<std::int16_t> expected;
        for (int i = 0; i < 10000; ++i)
            expected.insert(expected.end(), c.frame.begin(), c.frame.end());
        std::vector<std::int16_t> out = Rendered();
        out.resize(expected.size());
        EXPECT_TRUE(out == expected) << c.speakers << " speakers, flags " << std::hex << c.flags;
    }
}

} // namespace velmo::engine::test
