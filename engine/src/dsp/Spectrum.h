/// The spectrum of what is heard.
#pragma once

#include "Fft.h"

#include <cstddef>
#include <span>

namespace velmo::engine {

/// Turns 2048 stereo frames into 1024 magnitudes: both sides averaged, Hann window (periodic),
/// discrete Fourier transform of 2048 points.
///
/// Scale: a sine of amplitude 1 on both sides, in the middle of a bin, gives 1 there (and 0.5 in
/// both bins beside it), so magnitudes are divided by half the window's sum; bin 0, which has no
/// mirror image, by the whole sum: a constant 1 gives 1. Bin i is at i * rate / 2048 Hz.
///
/// The table is made by the constructor; after that any thread may compute, several at once.
class Spectrum
{
public:
    static constexpr std::size_t Frames = 2048;
    static constexpr std::size_t Bins = Frames / 2;

    /// The sum of both sides of each frame.
    using Sums = Fft::Signal;

    /// Writes the sums of interleaved stereo frames to `sums`.
    static void SumSides(std::span<const float> stereo, float* sums) noexcept;

    /// Writes `Bins` magnitudes; `sums` are used up. Takes a few microseconds and 8 KiB of the
    /// stack; doesn't allocate, lock or throw. Where a sample is infinite or no number, all are 0.
    void Compute(Sums& sums, float* magnitudes) const noexcept;

private:
    Fft m_fft;
};

} // namespace velmo::engine
