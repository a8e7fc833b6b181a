#include "TestFiles.h"

#include "dsp/ChannelMap.h"
#include "dsp/Resampler.h"
#include "dsp/SampleFormat.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <vector>

namespace velmo::test {
namespace {

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
             Case{96000,  44100, 6, 50003 },
             Case{8000,   48000, 1, 1     },
             Case{11025,  44100, 8, 3     },
             Case{192000, 44100, 2, 12345 }
    }) {
        SCOPED_TRACE(c.frames);
        engine::Resampler resampler(c.in, c.out, c.channels);
        const std::vector<float> sound = Noise(c.frames, c.channels);
        std::vector<float> piece(std::size_t{500} * c.channels);
        std::size_t used = 0;
        std::size_t made = 0;
        while (used < c.frames) {
            const auto step = resampler.Process(sound.data() + used * c.channels,
                                                std::min<std::size_t>(700, c.frames - used),
                                                piece.data(),
                                                500);
            ASSERT_GT(step.used + step.made, 0U);
            used += step.used;
            made += step.made;
        }
        while (const std::size_t rest = resampler.Flush(piece.data(), 500))
            made += rest;
        const double exact = static_cast<double>(c.frames) * c.out / c.in;
        EXPECT_EQ(made, static_cast<std::size_t>(std::llround(exact)));
    }
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
