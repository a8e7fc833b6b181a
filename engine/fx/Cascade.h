/// Up to twelve bands in a row, laid out for vector code.
#pragma once

#include <cstddef>

namespace velmo::fx {

/// Bands next to each other, with their filters' states. Two lanes a band, left and right; lanes
/// without a band hold 0 in each coefficient and let the sound through.
///
/// The coefficients are those of `PeakingBand`; while they move, the ones in force are
/// base + weight * change.
struct Cascade
{
    static constexpr int MaxBands = 12;
    static constexpr int Lanes = 2 * MaxBands;

    /// Order of `base` and `change`.
    enum Coefficient
    {
        Keep,
        Couple,
        Follow,
        Ring,
        Direct,
        Coefficients
    };

    float base[Coefficients][Lanes] = {};
    float change[Coefficients][Lanes] = {};
    float s1[Lanes] = {};
    float s2[Lanes] = {};
    int bands = 0;
};

/// Filters `frames` interleaved stereo frames in place. `weights` is null, or has a number for each
/// of `frames` + `Cascade::MaxBands` steps; the band at place k takes that of step n + k for
/// frame n. How a stream is cut into calls makes no difference to any bit of it.
using RunCascade = void (*)(Cascade& cascade,
                            float* samples,
                            std::size_t frames,
                            const float* weights);

/// With vectors of four floats, for every processor.
void RunCascade4(Cascade& cascade, float* samples, std::size_t frames, const float* weights);

#if defined(__x86_64__)
/// With vectors of eight floats, for processors with AVX2 and FMA only.
void RunCascade8(Cascade& cascade, float* samples, std::size_t frames, const float* weights);
#endif

/// The fastest that this processor can run.
RunCascade FastestCascade() noexcept;

} // namespace velmo::fx
