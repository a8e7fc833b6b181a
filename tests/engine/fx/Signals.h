/// Sounds to test with, and measures of them. Stereo frames, interleaved.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <random>
#include <vector>

namespace velmo::test {

constexpr double Pi = std::numbers::pi;

inline std::vector<float> Noise(std::size_t frames)
{
    std::minstd_rand random(7);
    std::vector<float> samples(2 * frames);
    for (float& s : samples)
        s = static_cast<float>(random() % 20000) / 10000.0f - 1.0f;
    return samples;
}

/// The same on both sides.
inline std::vector<float> Sine(std::size_t frames, double amplitude, double hertz, double rate)
{
    std::vector<float> samples(2 * frames);
    for (std::size_t i = 0; i < frames; ++i)
        samples[2 * i] = samples[2 * i + 1] = static_cast<float>(
            amplitude * std::sin(2 * Pi * hertz / rate * static_cast<double>(i)));
    return samples;
}

/// Greatest sample above 6 kHz or so: of a sine far below nothing is left, of a step half or more.
inline float Roughness(const std::vector<float>& samples, double rate)
{
    constexpr int Half = 63;
    std::vector<double> highPass;
    for (int i = -Half; i <= Half; ++i) {
        const double angle = Pi * (i + Half) / Half;
        const double window = 0.35875 - 0.48829 * std::cos(angle) + 0.14128 * std::cos(2 * angle)
                              - 0.01168 * std::cos(3 * angle);
        const double cutoff = 2 * 6000 / rate;
        const double low = i == 0 ? cutoff : std::sin(Pi * cutoff * i) / (Pi * i);
        highPass.push_back((i == 0 ? 1.0 : 0.0) - low * window);
    }
    double worst = 0;
    for (std::size_t i = 0; i + 2 * highPass.size() < samples.size(); i += 2) {
        double sum = 0;
        for (std::size_t k = 0; k < highPass.size(); ++k)
            sum += highPass[k] * static_cast<double>(samples[i + 2 * k]);
        worst = std::max(worst, std::abs(sum));
    }
    return static_cast<float>(worst);
}

} // namespace velmo::test
