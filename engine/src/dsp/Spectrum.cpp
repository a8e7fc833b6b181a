#include "Spectrum.h"

namespace velmo::engine {

void Spectrum::SumSides(std::span<const float> stereo, float* __restrict sums) noexcept
{
    for (std::size_t i = 0; i < stereo.size() / 2; ++i)
        sums[i] = stereo[2 * i] + stereo[2 * i + 1];
}

/// The window is 1/2 - 1/2 cos(pi * i / 1024), whose four quarters are the table forwards and
/// backwards. Its sum is half its length; it brings the mean of both sides and the scale of the
/// magnitudes along.
void Spectrum::Compute(Sums& sums, float* magnitudes) const noexcept
{
    constexpr float Scale = 1.0f / static_cast<float>(Frames);
    constexpr std::size_t Quarter = Frames / 4;
    const auto& cosine = m_fft.Cosine();
    float* const first = sums.data();
    float* const second = first + Quarter;
    float* const third = second + Quarter;
    float* const fourth = third + Quarter;
#pragma GCC ivdep // the quarters don't overlap
    for (std::size_t i = 0; i < Quarter; ++i) {
        first[i] *= Scale * (1 - cosine[i]);
        second[i] *= Scale * (1 + cosine[Quarter - i]);
        third[i] *= Scale * (1 + cosine[i]);
        fourth[i] *= Scale * (1 - cosine[Quarter - i]);
    }
    m_fft.Magnitudes(sums, magnitudes);
}

} // namespace velmo::engine
