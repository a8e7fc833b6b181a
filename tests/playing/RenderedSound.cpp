// The sound is cut into windows of 50 ms. In each the level of each pitch is measured by the
// Goertzel recurrence over the sum of both sides, with a Hann window, so that one tone does not
// spill over into the measure of another.

#include "RenderedSound.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace velmo::test {

namespace {

constexpr double WindowSeconds = 0.05;
constexpr double HeardFrom = 0.02; ///< level

double Level(const float* frames, std::size_t count, double cyclesPerFrame)
{
    const double turn = 2 * std::numbers::pi * cyclesPerFrame;
    const double factor = 2 * std::cos(turn);
    double last = 0;
    double before = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const double hann =
            1
            - std::cos(2 * std::numbers::pi * static_cast<double>(i) / static_cast<double>(count));
        const double mono =
            (static_cast<double>(frames[2 * i]) + static_cast<double>(frames[2 * i + 1])) / 2;
        const double now = mono * hann + factor * last - before;
        before = last;
        last = now;
    }
    const double power = last * last + before * before - factor * last * before;
    return 2 * std::sqrt(std::max(power, 0.0)) / static_cast<double>(count);
}

/// The stretches of one pitch, from its level in each window.
void AddStretches(std::size_t tone, const std::vector<double>& levels, std::vector<Heard>& heard)
{
    for (std::size_t window = 0; window < levels.size();) {
        const std::size_t from = window;
        while (window < levels.size() && levels[window] >= HeardFrom)
            ++window;
        const std::size_t count = window - from;
        if (count >= 4) {
            const auto begin = levels.begin() + static_cast<std::ptrdiff_t>(from);
            const auto [low, high] =
                std::minmax_element(begin + 2, begin + static_cast<std::ptrdiff_t>(count) - 2);
            heard.push_back({.tone = tone,
                             .from = static_cast<double>(from) * WindowSeconds,
                             .seconds = static_cast<double>(count) * WindowSeconds,
                             .lowest = count > 4 ? *low : 0,
                             .highest = count > 4 ? *high : 0});
        }
        window = std::max(window, from + 1);
    }
}

} // namespace

std::vector<Heard> FindTones(const std::vector<float>& samples,
                             double sampleRate,
                             const std::vector<double>& pitches)
{
    const auto frames = static_cast<std::size_t>(WindowSeconds * sampleRate);
    const std::size_t windows = samples.size() / 2 / frames;
    std::vector<Heard> heard;
    for (std::size_t tone = 0; tone < pitches.size(); ++tone) {
        std::vector<double> levels;
        for (std::size_t window = 0; window < windows; ++window)
            levels.push_back(
                Level(samples.data() + window * frames * 2, frames, pitches[tone] / sampleRate));
        AddStretches(tone, levels, heard);
    }
    std::sort(
        heard.begin(), heard.end(), [](const Heard& a, const Heard& b) { return a.from < b.from; });
    return heard;
}

} // namespace velmo::test
