#include "Spectrum.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace velmo::engine {

/// The window's sum is half its length; its values bring the mean of both sides and the scale of
/// the magnitudes along.
Spectrum::Spectrum()
{
    constexpr double Scale = 0.5 / (Frames / 4.0);
    for (std::size_t i = 0; i < Frames; ++i) {
        const double angle = 2.0 * std::numbers::pi * static_cast<double>(i) / Frames;
        m_window[i] = static_cast<float>(Scale * (0.5 - 0.5 * std::cos(angle)));
    }
}

void Spectrum::Compute(const float* stereo, std::size_t frames, float* magnitudes) const noexcept
{
    Fft::Complex signal; // NOLINT(cppcoreguidelines-pro-type-member-init): filled below
    const std::size_t pairs = std::min(frames, Frames) / 2;
    for (std::size_t i = 0; i < pairs; ++i) {
        const float* pair = stereo + 4 * i;
        signal.re[i] = (pair[0] + pair[1]) * m_window[2 * i];
        signal.im[i] = (pair[2] + pair[3]) * m_window[2 * i + 1];
    }
    std::fill(signal.re.begin() + pairs, signal.re.end(), 0.0f);
    std::fill(signal.im.begin() + pairs, signal.im.end(), 0.0f);
    if (frames < Frames && frames % 2 != 0)
        signal.re[pairs] = (stereo[4 * pairs] + stereo[4 * pairs + 1]) * m_window[2 * pairs];
    m_fft.Power(signal, magnitudes);
    magnitudes[0] *= 0.25f;
    constexpr float Beyond = 1e30f; // neither infinite nor no number, of which this is false too
    for (std::size_t i = 0; i < Bins; ++i)
        magnitudes[i] = magnitudes[i] < Beyond ? std::sqrt(magnitudes[i]) : 0.0f;
}

} // namespace velmo::engine
