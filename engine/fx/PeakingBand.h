/// One band of the equalizer: its filter's coefficients.
#pragma once

#include "bass_fx.h"

#include <cstdint>

namespace velmo::fx {

/// A peaking filter as a state variable filter with trapezoidal integrators, after A. Simper,
/// "Solving the continuous SVF equations using trapezoidal integration and equivalent currents":
///
///     u = x - s2
///     y = x + direct * u + ring * s1
///     s1' = keep * s1 + couple * u
///     s2' = s2 + couple * s1 + follow * u
///
/// Its response is that of the peaking filter of R. Bristow-Johnson, "Audio EQ Cookbook". The form
/// is exact in floats at low centres too, where a direct form is not, and it can be changed while
/// it sounds: the step from (s1, s2) on is a contraction for every centre and width (it is the
/// Cayley transform of a damped oscillator), and so is every weighted mean of two of them.
struct PeakingBand
{
    float keep = 0;
    float couple = 0;
    float follow = 0;
    float ring = 0; ///< 0 with `direct` 0: the output is the input to the bit
    float direct = 0;

    /// The same poles, but nothing of them in the output.
    PeakingBand Silent() const noexcept
    {
        return {.keep = keep, .couple = couple, .follow = follow, .ring = 0, .direct = 0};
    }
};

/// Whether a record can be a band: `lBand` 0 to 63, every number finite, a centre above 0, a
/// bandwidth or a Q above 0, and all channels.
bool IsPossible(const BASS_BFX_PEAKEQ& record) noexcept;

/// Whether the band changes the sound at `sampleRate` Hz: its gain is not 0 and its centre below
/// half the rate.
bool IsActive(const BASS_BFX_PEAKEQ& record, std::uint32_t sampleRate) noexcept;

/// The filter of an active band. Gains beyond 96 dB are taken to that.
PeakingBand DesignPeakingBand(const BASS_BFX_PEAKEQ& record, std::uint32_t sampleRate) noexcept;

} // namespace velmo::fx
