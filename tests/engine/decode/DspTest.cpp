#include "TestFiles.h"

#include "dsp/ChannelMap.h"
#include "dsp/Resampler.h"
#include "dsp/SampleFormat.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>
#include <vector>

namespace velmo::test {
namespace {

std::vector<float> Sine(std::size_t frames, double hertz, double rate)
{
    std::vector<float> samples(frames);
    for (std::size_t i = 0; i < frames; ++i)
        samples[i] = static_cast<float>(
            0.5 * std::sin(2.0 * std::numbers::pi * hertz / rate * static_cast<double>(i)));
    return samples;
}

/// Converts all of `in`, in pieces of `piece` frames.
std::vector<float> Convert(engine::Resampler& resampler,
                           const std::vector<float>& in,
                           std::size_t channels,
                           std::size_t piece)
{
    std::vector<float> out;
    std::vector<float> made(500 * channels);
    const std::size_t frames = in.size() / channels;
    for (std::size_t done = 0; done < frames;) {
        const auto step = resampler.Process(
            in.data() + done * channels, std::min(piece, frames - done), made.data(), 500);
        done += step.used;
        out.insert(out.end(),
                   made.begin(),
                   made.begin() + static_cast<std::ptrdiff_t>(step.made * channels));
        if (step.used == 0 && step.made == 0)
            break;
    }
    while (const std::size_t rest = resampler.Flush(made.data(), 500))
        out.insert(
            out.end(), made.begin(), made.begin() + static_cast<std::ptrdiff_t>(rest * channels));
    return out;
}

TEST(ResamplerTest, KeepsASineAt110DecibelsOverTheRest)
{
    engine::Resampler resampler(48000, 44100, 1);
    const std::vector<float> made = Convert(resampler, Sine(480000, 997.0, 48000), 1, 1024);
    const std::vector<float> wanted = Sine(441000, 997.0, 44100);
    ASSERT_EQ(made.size(), wanted.size());
    double signal = 0;
    double noise = 0;
    for (std::size_t i = 4410; i + 4410 < wanted.size(); ++i) {
        signal += static_cast<double>(wanted[i]) * wanted[i];
        noise += std::pow(static_cast<double>(made[i]) - wanted[i], 2);
    }
    EXPECT_GT(10.0 * std::log10(signal / noise), 110.0);
}

TEST(ResamplerTest, GivesTheRoundedCountOfFrames)
{
    struct Case
    {
        std::uint32_t in;
        std::uint32_t out;
        std::uint32_t channels;
        std::size_t frames;
    };
    for (const Case& c : {
             Case{48000,  44100, 2, 100000},
             Case{44100,  48000, 2, 100001},
             Case{22050,  44100, 1, 777   },
             Case{96000,  44100, 6, 50003 },
             Case{8000,   48000, 1, 1     },
             Case{11025,  44100, 8, 3     },
             Case{192000, 44100, 2, 12345 }
    }) {
        SCOPED_TRACE(c.frames);
        engine::Resampler resampler(c.in, c.out, c.channels);
        const std::vector<float> made =
            Convert(resampler, Noise(c.frames, c.channels), c.channels, 700);
        const double exact = static_cast<double>(c.frames) * c.out / c.in;
        EXPECT_EQ(made.size() / c.channels, static_cast<std::size_t>(std::llround(exact)));
    }
}

TEST(ResamplerTest, AfterClearItIsAsNew)
{
    const std::vector<float> sound = Noise(20000, 2);
    engine::Resampler fresh(48000, 44100, 2);
    engine::Resampler used(48000, 44100, 2);
    std::vector<float> ignored(2000);
    used.Process(sound.data() + 5000, 1000, ignored.data(), 1000);
    used.Clear();
    // Other pieces at the input must make no difference either.
    EXPECT_EQ(Convert(used, sound, 2, 333), Convert(fresh, sound, 2, 4096));
    EXPECT_EQ(fresh.Flush(ignored.data(), 1000), 0U);
}

TEST(ChannelMapTest, SendsEveryChannelToItsSides)
{
    // The share of each channel alone, before scaling by what full scale on all of them would give.
    constexpr float A = 0.70710678f;
    struct Case
    {
        std::uint32_t channels;
        std::vector<float> left;
        std::vector<float> right;
    };
    const std::vector<Case> cases = {
        Case{1, {1},                      {1}                     },
        Case{2, {1, 0},                   {0, 1}                  },
        Case{3, {1, 0, A},                {0, 1, A}               },
        Case{4, {1, 0, A, 0},             {0, 1, 0, A}            },
        Case{5, {1, 0, A, A, 0},          {0, 1, A, 0, A}         },
        Case{6, {1, 0, A, 0, A, 0},       {0, 1, A, 0, 0, A}      },
        Case{7, {1, 0, A, 0, A, A, 0},    {0, 1, A, 0, A, 0, A}   },
        Case{8, {1, 0, A, 0, A, 0, A, 0}, {0, 1, A, 0, 0, A, 0, A}}
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.channels);
        float sum = 0;
        for (const float share : c.left)
            sum += share;
        for (std::size_t channel = 0; channel < c.channels; ++channel) {
            std::vector<float> in(2UL * c.channels);
            in[c.channels + channel] = 1.0f; // in the second of two frames
            std::array<float, 4> out = {};
            engine::MapToStereo(in.data(), 2, c.channels, out.data());
            EXPECT_EQ(out[0], 0.0f);
            EXPECT_NEAR(out[2], c.left[channel] / sum, 1e-6f);
            EXPECT_NEAR(out[3], c.right[channel] / sum, 1e-6f);
        }
    }
}

TEST(ChannelMapTest, MonoIsTheMeanOfTheSidesAlsoInPlace)
{
    std::vector<float> sound = Noise(1001, 2);
    const std::vector<float> original = sound;
    engine::MixToMono(sound.data(), 1001, 2, sound.data());
    for (std::size_t i = 0; i < 1001; ++i)
        ASSERT_EQ(sound[i], 0.5f * (original[2 * i] + original[2 * i + 1]));
}

TEST(SampleFormatTest, SixteenBitsComeBackUnchanged)
{
    std::vector<float> samples;
    std::vector<std::int16_t> wanted;
    for (int value = -32768; value <= 32767; ++value) {
        samples.push_back(static_cast<float>(value) / 32768.0f);
        wanted.push_back(static_cast<std::int16_t>(value));
    }
    std::vector<std::int16_t> made(samples.size());
    engine::ToInt16(samples.data(), samples.size(), made.data());
    EXPECT_EQ(made, wanted);
    Bytes bytes(2 * samples.size());
    engine::ToInt16LittleEndian(samples.data(), samples.size(), bytes.data());
    EXPECT_EQ(bytes[2], 0x01);
    EXPECT_EQ(bytes[3], 0x80);
}

TEST(SampleFormatTest, RoundsToEvenAndLimitsAndSilencesNonNumbers)
{
    constexpr float Infinity = std::numeric_limits<float>::infinity();
    constexpr float NaN = std::numeric_limits<float>::quiet_NaN();
    struct Case
    {
        float sample;
        std::int16_t bits16;
        float bits8;
    };
    const std::vector<Case> cases = {
        Case{0.5f / 32768.0f,  0,      0.0f           },
        Case{1.5f / 32768.0f,  2,      0.0f           },
        Case{-2.5f / 32768.0f, -2,     0.0f           },
        Case{1.0f,             32767,  127.0f / 128.0f},
        Case{7e9f,             32767,  127.0f / 128.0f},
        Case{-3.0f,            -32768, -1.0f          },
        Case{Infinity,         32767,  127.0f / 128.0f},
        Case{-Infinity,        -32768, -1.0f          },
        Case{NaN,              0,      0.0f           },
        Case{-NaN,             0,      0.0f           },
        Case{1.5f / 128.0f,    384,    2.0f / 128.0f  }
    };
    // Once alone and once in a full block: both kinds of loop.
    for (const std::size_t count : {std::size_t{1}, std::size_t{8}}) {
        for (const Case& c : cases) {
            SCOPED_TRACE(c.sample);
            const std::vector<float> in(count, c.sample);
            std::vector<std::int16_t> bits16(count);
            engine::ToInt16(in.data(), count, bits16.data());
            EXPECT_EQ(bits16, std::vector(count, c.bits16));
            std::vector<float> bits8 = in;
            engine::Quantise8Bit(bits8.data(), count);
            EXPECT_EQ(bits8, std::vector(count, c.bits8));
        }
    }
}

} // namespace
} // namespace velmo::test
