#include "dsp/ChannelMap.h"
#include "dsp/SampleFormat.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <numeric>
#include <vector>

namespace velmo::engine {
namespace {

TEST(ChannelMap, SendsEveryChannelToItsSides)
{
    // The share of each channel alone, before scaling by what full scale on all of them would give.
    constexpr float A = 0.70710678f;
    const std::vector<float> cases[][2] = {
        {{1},                      {1}                     },
        {{1, 0},                   {0, 1}                  },
        {{1, 0, A},                {0, 1, A}               },
        {{1, 0, A, 0},             {0, 1, 0, A}            },
        {{1, 0, A, A, 0},          {0, 1, A, 0, A}         },
        {{1, 0, A, 0, A, 0},       {0, 1, A, 0, 0, A}      },
        {{1, 0, A, 0, A, A, 0},    {0, 1, A, 0, A, 0, A}   },
        {{1, 0, A, 0, A, 0, A, 0}, {0, 1, A, 0, 0, A, 0, A}}
    };
    for (const auto& [left, right] : cases) {
        SCOPED_TRACE(left.size());
        const float sum = std::accumulate(left.begin(), left.end(), 0.0f);
        for (std::size_t channel = 0; channel < left.size(); ++channel) {
            std::vector<float> in(2 * left.size());
            in[left.size() + channel] = 1.0f; // in the second of two frames
            std::array<float, 4> out = {};
            MapToStereo(in.data(), 2, static_cast<std::uint32_t>(left.size()), out.data());
            EXPECT_EQ(out[0], 0.0f);
            EXPECT_NEAR(out[2], left[channel] / sum, 1e-6f);
            EXPECT_NEAR(out[3], right[channel] / sum, 1e-6f);
        }
    }
}

TEST(SampleFormat, RoundsToEvenAndLimitsAndSilencesNonNumbers)
{
    constexpr float Infinity = std::numeric_limits<float>::infinity();
    constexpr float NaN = std::numeric_limits<float>::quiet_NaN();
    struct Case
    {
        float sample;
        std::int16_t bits16;
        float bits8;
    };
    constexpr Case Cases[] = {
        {0.5f / 32768.0f,  0,      0.0f           },
        {1.5f / 32768.0f,  2,      0.0f           },
        {-2.5f / 32768.0f, -2,     0.0f           },
        {1.0f,             32767,  127.0f / 128.0f},
        {-3.0f,            -32768, -1.0f          },
        {Infinity,         32767,  127.0f / 128.0f},
        {-Infinity,        -32768, -1.0f          },
        {NaN,              0,      0.0f           },
        {1.5f / 128.0f,    384,    2.0f / 128.0f  }
    };
    // Once alone and once in a full block: both kinds of loop.
    for (const std::size_t count : {1U, 8U}) {
        for (const Case& c : Cases) {
            std::vector<float> samples(count, c.sample);
            std::vector<std::int16_t> bits16(count);
            ToInt16(samples.data(), count, bits16.data());
            EXPECT_EQ(bits16, std::vector(count, c.bits16)) << c.sample;
            Quantise8Bit(samples.data(), count);
            EXPECT_EQ(samples, std::vector(count, c.bits8)) << c.sample;
        }
    }
}

} // namespace
} // namespace velmo::engine
