#include "dsp/Spectrum.h"

#include "Signals.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>

namespace velmo::test {
namespace {

constexpr std::size_t Frames = engine::Spectrum::Frames;
using Magnitudes = std::array<float, engine::Spectrum::Bins>;

Magnitudes SpectrumOf(const std::vector<float>& samples)
{
    const engine::Spectrum spectrum;
    engine::Spectrum::Sums sums;
    Magnitudes magnitudes;
    engine::Spectrum::SumSides(samples, sums.data());
    spectrum.Compute(sums, magnitudes.data());
    return magnitudes;
}

TEST(SpectrumTest, TellsTheAmplitudeOfASineInTheMiddleOfABin)
{
    for (std::size_t bin = 2; bin < engine::Spectrum::Bins - 1; bin = bin * 5 / 4 + 1) {
        const Magnitudes got = SpectrumOf(Sine(Frames, 1, static_cast<double>(bin), Frames));
        for (std::size_t i = 0; i < got.size(); ++i) {
            const std::size_t distance = std::max(i, bin) - std::min(i, bin);
            const float wanted = distance == 0 ? 1.0f : distance == 1 ? 0.5f : 0.0f;
            ASSERT_NEAR(got[i], wanted, 1e-5f) << "bin " << i << " of a sine in " << bin;
        }
    }
}

TEST(SpectrumTest, AveragesBothSides)
{
    const std::vector<float> constant(2 * Frames, 1.0f);
    EXPECT_NEAR(SpectrumOf(constant)[0], 1.0f, 1e-5f);

    std::vector<float> sides = Sine(Frames, 0.8, 40, Frames);
    for (std::size_t i = 0; i < sides.size(); i += 2)
        sides[i] = 0;
    EXPECT_NEAR(SpectrumOf(sides)[40], 0.4f, 1e-5f);
}

TEST(SpectrumTest, IsSilentWhereASampleIsNoNumber)
{
    std::vector<float> samples = Noise(Frames);
    samples[1001] = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(SpectrumOf(samples), Magnitudes{});
}

} // namespace
} // namespace velmo::test
