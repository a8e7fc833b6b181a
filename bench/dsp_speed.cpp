// What the equalizer and the spectrum cost: dsp_speed

#include "Equalizer.h"
#include "Measure.h"

#include "dsp/Spectrum.h"

#include <array>
#include <cmath>

namespace velmo::bench {

namespace {

constexpr std::uint32_t Rate = 44100;
constexpr std::size_t BlockFrames = 441;
constexpr std::size_t Blocks = 30; // in less time than the system lets a process run at once
constexpr std::array<float, 11> Centres = {
    60, 170, 310, 600, 1000, 3000, 6000, 9000, 12000, 14000, 16000};

BASS_BFX_PEAKEQ Band(std::size_t index)
{
    return {.lBand = static_cast<int>(index),
            .fBandwidth = 2.5f,
            .fQ = 0,
            .fCenter = Centres[index],
            .fGain = index % 2 == 0 ? 4.0f : -3.0f,
            .lChannel = BASS_BFX_CHANALL};
}

std::vector<float> Tones(std::size_t frames)
{
    std::vector<float> samples(frames * 2);
    for (std::size_t i = 0; i < samples.size(); ++i)
        samples[i] = 0.3f * std::sin(0.01f * static_cast<float>(i % 10000))
                     + 0.1f * std::sin(0.7f * static_cast<float>(i % 10000));
    return samples;
}

/// The same filters as they stand in `PeakingBand`: a frame after the other, a band after the
/// other.
class PlainLoop
{
public:
    PlainLoop()
    {
        for (std::size_t i = 0; i < Centres.size(); ++i)
            m_bands[i] = fx::DesignPeakingBand(Band(i), Rate);
    }

    void Process(float* samples, std::size_t frames)
    {
        for (std::size_t n = 0; n < frames; ++n)
            for (std::size_t side = 0; side < 2; ++side)
                samples[2 * n + side] = Filter(m_sides[side], samples[2 * n + side]);
    }

private:
    struct Side
    {
        std::array<float, Centres.size()> s1 = {};
        std::array<float, Centres.size()> s2 = {};
    };

    float Filter(Side& side, float x) const
    {
        for (std::size_t i = 0; i < m_bands.size(); ++i) {
            const fx::PeakingBand& band = m_bands[i];
            const float s1 = side.s1[i];
            const float s2 = side.s2[i];
            const float u = x - s2;
            x += band.direct * u + band.ring * s1;
            side.s1[i] = band.keep * s1 + band.couple * u;
            side.s2[i] = s2 + band.couple * s1 + band.follow * u;
        }
        return x;
    }

    std::array<fx::PeakingBand, Centres.size()> m_bands = {};
    std::array<Side, 2> m_sides = {};
};

/// Seconds that all blocks of the sound take.
template<class Filter>
double FilterSeconds(Filter& filter, std::vector<float> samples)
{
    return Seconds([&] {
        for (std::size_t block = 0; block < Blocks; ++block)
            filter.Process(samples.data() + block * BlockFrames * 2, BlockFrames);
    });
}

void MeasureEqualizer(const std::string& figure, fx::RunCascade variant)
{
    fx::Equalizer equalizer(Rate, variant);
    for (std::size_t i = 0; i < Centres.size(); ++i)
        equalizer.Set(Band(i));
    PlainLoop plain;
    const std::vector<float> samples = Tones(BlockFrames * Blocks);
    const Pair pair = InTurns(
        501,
        [&] { return FilterSeconds(equalizer, samples); },
        [&] { return FilterSeconds(plain, samples); });
    const double ratio = pair.yardstick / pair.ours;
    const auto frames = static_cast<double>(BlockFrames * Blocks);
    Row(figure + " against a plain loop of the same filters",
        Text("%.1f times as fast", ratio) + Text(" (%.1f ns a frame)", pair.ours / frames * 1e9),
        "4",
        ratio >= 4);
}

void MeasureSpectrum()
{
    constexpr int Rounds = 100;
    const engine::Spectrum spectrum;
    const std::vector<float> samples = Tones(engine::Spectrum::Frames + Rounds);
    std::array<float, engine::Spectrum::Bins> magnitudes = {};
    engine::Spectrum::Sums sums = {};
    std::vector<double> seconds(101);
    float seen = 0;
    for (double& run : seconds)
        run = Seconds([&] {
            for (std::size_t i = 0; i < Rounds; ++i) {
                engine::Spectrum::SumSides(
                    std::span(samples).subspan(2 * i, 2 * engine::Spectrum::Frames), sums.data());
                spectrum.Compute(sums, magnitudes.data());
                seen += magnitudes[i];
            }
        });
    const double microseconds = Median(seconds) / Rounds * 1e6;
    Row("spectrum of 2048 frames",
        Text("%.1f us", microseconds),
        "10 us",
        seen > 0 && microseconds <= 10);
}

} // namespace

} // namespace velmo::bench

int main()
{
    using namespace velmo;
    bench::MeasureEqualizer("equalizer of 11 bands", fx::FastestCascade());
    if (fx::FastestCascade() != fx::RunCascade4)
        bench::MeasureEqualizer("equalizer of 11 bands without AVX2", fx::RunCascade4);
    bench::MeasureSpectrum();
    return 0;
}
