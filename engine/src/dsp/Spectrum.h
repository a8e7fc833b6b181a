/// The spectrum of what is heard.
#pragma once

#include "Fft.h"

#include <array>
#include <cstddef>

namespace velmo::engine {

/// Turns 2048 stereo frames into 1024 magnitudes: both sides averaged, Hann window (periodic),
/// discrete Fourier transform of 2048 points.
///
/// Scale: a sine of amplitude 1 on both sides, in the middle of a bin, gives 1 there (and 0.5 in
/// both bins beside it), so magnitudes are divided by half the window's sum; bin 0, which has no
/// mirror image, by the whole sum: a constant 1 gives 1. Bin i is at i * rate / 2048 Hz.
///
/// Tables are made by the constructor; after that any thread may compute, several at once.
class Spectrum
{
public:
    static constexpr std::size_t Frames = 2048;
    static constexpr std::size_t Bins = Frames / 2;

    Spectrum();

    /// Writes `Bins` magnitudes for `frames` interleaved stereo frames, of which the first `Frames`
    /// count; those missing at the end are silence. Takes a few microseconds and 16 KiB of the
    /// stack; doesn't allocate, lock or throw. Where a sample is infinite or no number, all are 0.
    void Compute(const float* stereo, std::size_t frames, float* magnitudes) const noexcept;

private:
    Fft m_fft;
    std::array<float, Frames> m_window = {};
};

} // namespace velmo::engine
