#include "Equalizer.h"

#include "Signals.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <complex>
#include <limits>
#include <numbers>
#include <random>
#include <vector>

namespace velmo::test {
namespace {

constexpr std::array<float, 11> Centres = {
    60, 170, 310, 600, 1000, 3000, 6000, 9000, 12000, 14000, 16000};
constexpr std::array Gains = {-10.0f, -3.0f, 0.0f, 6.0f, 10.0f};

BASS_BFX_PEAKEQ Band(int band, float gain)
{
    return {.lBand = band,
            .fBandwidth = 2.5f,
            .fQ = 0,
            .fCenter = Centres[static_cast<std::size_t>(band) % Centres.size()],
            .fGain = gain,
            .lChannel = BASS_BFX_CHANALL};
}

/// The peaking filter's response as the cookbook gives it, as a direct form in doubles.
std::complex<double> Cookbook(const BASS_BFX_PEAKEQ& band, double rate, double hertz)
{
    const double w0 = 2 * Pi * static_cast<double>(band.fCenter) / rate;
    const double a = std::pow(10.0, static_cast<double>(band.fGain) / 40);
    const auto octaves = static_cast<double>(band.fBandwidth);
    const double alpha =
        octaves > 0 ? std::sin(w0) * std::sinh(std::numbers::ln2 / 2 * octaves * w0 / std::sin(w0))
                    : std::sin(w0) / (2 * static_cast<double>(band.fQ));
    const std::complex<double> z = std::polar(1.0, -2 * Pi * hertz / rate);
    const std::complex<double> middle = -2 * std::cos(w0) * z;
    return (1 + alpha * a + middle + (1 - alpha * a) * z * z)
           / (1 + alpha / a + middle + (1 - alpha / a) * z * z);
}

/// Greatest deviation in dB of the bands' response to an impulse from the cookbook's, 20 Hz to 0.45
/// of the rate.
double Deviation(const std::vector<BASS_BFX_PEAKEQ>& bands, std::uint32_t rate)
{
    fx::Equalizer equalizer(rate);
    for (const BASS_BFX_PEAKEQ& band : bands)
        EXPECT_EQ(equalizer.Set(band), BASS_OK);
    std::vector<float> response(std::size_t{2} * (rate / 10));
    response[0] = 1;
    response[1] = -1;
    equalizer.Process(response.data(), response.size() / 2);
    double worst = 0;
    double hertz = 20;
    while (hertz < 0.45 * rate) {
        const std::complex<double> turn = std::polar(1.0, -2 * Pi * hertz / rate);
        std::complex<double> sum = 0;
        for (std::size_t i = response.size(); i > 0; i -= 2) {
            EXPECT_EQ(response[i - 2], -response[i - 1]);
            sum = sum * turn + static_cast<double>(response[i - 2]);
        }
        for (const BASS_BFX_PEAKEQ& band : bands)
            sum /= Cookbook(band, rate, hertz);
        worst = std::max(worst, std::abs(20 * std::log10(std::abs(sum))));
        hertz *= 1.25;
    }
    return worst;
}

TEST(EqualizerTest, HasTheCookbooksResponse)
{
    for (const std::uint32_t rate : {44100u, 48000u, 96000u}) {
        std::vector<BASS_BFX_PEAKEQ> all;
        for (int band = 0; band < 11; ++band) {
            for (const float gain : Gains)
                EXPECT_LT(Deviation({Band(band, gain)}, rate), 0.05)
                    << rate << " Hz, band " << band << ", " << gain << " dB";
            all.push_back(Band(band, band % 2 == 0 ? 10.0f : -3.0f));
        }
        EXPECT_LT(Deviation(all, rate), 0.05) << rate;
        BASS_BFX_PEAKEQ sharp = Band(5, 6.0f);
        sharp.fBandwidth = 0;
        sharp.fQ = 4;
        EXPECT_LT(Deviation({sharp}, rate), 0.05) << rate;
    }
}

TEST(EqualizerTest, ChangesNoBitWhereNoBandHasAnythingToDo)
{
    fx::Equalizer equalizer(32000);
    for (int band = 0; band < 11; ++band)
        equalizer.Set(Band(band, band == 10 ? 10.0f : 0.0f)); // the last is at half the rate
    std::vector<float> samples = Noise(1000);
    samples[3] = std::numeric_limits<float>::denorm_min();
    samples[4] = std::numeric_limits<float>::infinity();
    const std::vector<float> before = samples;
    equalizer.Process(samples.data(), 400);
    equalizer.Process(samples.data() + 800, 600);
    EXPECT_EQ(samples, before);
}

TEST(EqualizerTest, FadesBackToTheBitWhenItsBandsAreTakenBack)
{
    fx::Equalizer equalizer(48000);
    equalizer.Set(Band(4, 10));
    std::vector<float> samples = Noise(48000);
    const std::vector<float> before = samples;
    equalizer.Process(samples.data(), 10000);
    equalizer.Set(Band(4, 0));
    equalizer.Process(samples.data() + 20000, 38000);
    EXPECT_NE(samples[20100], before[20100]) << "cut off instead of faded";
    EXPECT_TRUE(std::equal(samples.end() - 60000, samples.end(), before.end() - 60000));
}

TEST(EqualizerTest, ReachesNewGainsSoonAndWithoutAStep)
{
    for (const std::uint32_t rate : {44100u, 96000u}) {
        fx::Equalizer equalizer(rate);
        equalizer.Set(Band(0, 3));
        std::vector<float> sine = Sine(rate / 2, 0.5, 1000, rate);
        const std::size_t block = rate / 100;
        std::array<float, 50> peaks = {};
        for (std::size_t i = 0; i < peaks.size(); ++i) {
            switch (i) {
            case 10: equalizer.Set(Band(4, 10)); break;
            case 20: equalizer.Set(Band(4, -10)); break;
            case 22: equalizer.Set(Band(4, 4)); break; // while that change is under way
            case 40: equalizer.Set(Band(4, 0)); break;
            default: break;
            }
            float* samples = sine.data() + i * 2 * block;
            equalizer.Process(samples, block);
            peaks[i] = *std::max_element(samples, samples + 2 * block);
        }
        EXPECT_NEAR(peaks[15] / peaks[9], 3.162f, 0.01f);
        EXPECT_NEAR(peaks[27] / peaks[9], 1.585f, 0.005f);
        EXPECT_NEAR(peaks[45] / peaks[9], 1.0f, 0.001f);
        // Without what comes of the sine's beginning.
        sine.erase(sine.begin(), sine.begin() + static_cast<std::ptrdiff_t>(10 * block));
        EXPECT_LT(Roughness(sine, rate), 1e-4f) << rate;
    }
}

/// Noise through `bands` bands, cut into calls of at most `longest` frames, with changes at 5000
/// and 5400 frames.
std::vector<float> Equalized(fx::RunCascade variant, int bands, std::size_t longest)
{
    fx::Equalizer equalizer(44100, variant);
    const auto setAll = [&](float factor) {
        for (int band = 0; band < bands; ++band)
            equalizer.Set(Band(band, factor * static_cast<float>(band % 7 - 2)));
    };
    setAll(1);
    std::vector<float> samples = Noise(9000);
    std::minstd_rand random(static_cast<unsigned>(longest));
    std::size_t done = 0;
    for (const std::size_t end : {5000u, 5400u, 9000u}) {
        while (done < end) {
            const std::size_t count = std::min(1 + random() % longest, end - done);
            equalizer.Process(samples.data() + 2 * done, count);
            done += count;
        }
        setAll(end == 5000 ? 2.0f : -1.0f);
    }
    return samples;
}

TEST(EqualizerTest, GivesTheSameHoweverTheStreamIsCutAndWhateverTheVectors)
{
    for (const int bands : {1, 2, 5, 11, 12, 13, 64}) {
        const std::vector<float> wanted = Equalized(fx::RunCascade4, bands, 9000);
        const float scale = *std::max_element(wanted.begin(), wanted.end());
        for (const fx::RunCascade variant : {fx::RunCascade4, fx::FastestCascade()}) {
            const std::vector<float> whole = Equalized(variant, bands, 9000);
            for (const std::size_t longest : {1u, 20u, 700u})
                EXPECT_EQ(Equalized(variant, bands, longest), whole) << bands << ", " << longest;
            for (std::size_t i = 0; i < whole.size(); ++i)
                ASSERT_NEAR(whole[i], wanted[i], 1e-5f * scale) << bands << " bands, sample " << i;
        }
    }
}

TEST(EqualizerTest, RecoversFromWhatIsNoNumber)
{
    for (const float bad : {std::numeric_limits<float>::quiet_NaN(),
                            std::numeric_limits<float>::infinity(),
                            std::numeric_limits<float>::max()}) {
        fx::Equalizer equalizer(44100);
        for (int band = 0; band < 11; ++band)
            equalizer.Set(Band(band, 10));
        std::vector<float> samples = Noise(2000);
        samples[100] = bad;
        samples[1999] = bad;
        for (std::size_t i = 0; i < 4; ++i)
            equalizer.Process(samples.data() + i * 1000, 500);
        EXPECT_TRUE(
            std::all_of(samples.begin(), samples.end(), [](float s) { return std::isfinite(s); }));
        EXPECT_TRUE(std::isfinite(bad)
                    || *std::max_element(samples.end() - 1000, samples.end()) > 1.0f);
    }
}

TEST(EqualizerTest, ForgetsTheSoundWhenReset)
{
    fx::Equalizer equalizer(44100);
    equalizer.Set(Band(0, 10));
    std::vector<float> samples = Noise(1000);
    equalizer.Process(samples.data(), 1000);
    equalizer.Set(Band(0, 5));
    equalizer.Process(samples.data(), 100);
    equalizer.Reset();
    equalizer.Set(Band(4, -5)); // holds at once, as before the first sound
    std::vector<float> again = Noise(1000);
    equalizer.Process(again.data(), 1000);

    fx::Equalizer fresh(44100);
    fresh.Set(Band(0, 5));
    fresh.Set(Band(4, -5));
    std::vector<float> wanted = Noise(1000);
    fresh.Process(wanted.data(), 1000);
    EXPECT_EQ(again, wanted);
}

TEST(EqualizerTest, RefusesRecordsThatCannotBe)
{
    fx::Equalizer equalizer(44100);
    const BASS_BFX_PEAKEQ good = Band(3, 6);
    ASSERT_EQ(equalizer.Set(good), BASS_OK);
    const auto refused = [&](auto field, auto value) {
        BASS_BFX_PEAKEQ bad = good;
        bad.*field = value;
        return equalizer.Set(bad) == BASS_ERROR_ILLPARAM;
    };
    using Record = BASS_BFX_PEAKEQ;
    const float none = std::numeric_limits<float>::quiet_NaN();
    const float infinite = std::numeric_limits<float>::infinity();
    EXPECT_TRUE(refused(&Record::lBand, -1));
    EXPECT_TRUE(refused(&Record::lBand, 64));
    for (const auto field : {&Record::fBandwidth, &Record::fQ, &Record::fCenter, &Record::fGain}) {
        EXPECT_TRUE(refused(field, none));
        EXPECT_TRUE(refused(field, infinite));
    }
    EXPECT_TRUE(refused(&Record::fCenter, 0.0f));
    EXPECT_TRUE(refused(&Record::fBandwidth, 0.0f)) << "neither bandwidth nor Q";

    for (const int band : {-1, 3, 4, 64}) {
        BASS_BFX_PEAKEQ got = {};
        got.lBand = band;
        EXPECT_EQ(equalizer.Get(got) == BASS_OK, band == 3) << band;
        EXPECT_EQ(got.fGain, band == 3 ? 6.0f : 0.0f) << band;
    }
}

} // namespace
} // namespace velmo::test
