#pragma once

#include <cstddef>

namespace velmo::engine {

/// The gain of the sum, which follows what is wished along raised cosines of one length: a ramp
/// that has begun is ended before the next one begins, so that a gain that is changed all the time
/// moves without a corner, whatever the blocks are. The mixing thread.
class GainRamp
{
public:
    /// Frames of one ramp; 0 for a step. While nothing is being mixed.
    void SetLength(std::size_t frames) noexcept;

    /// Takes `gain` at once.
    void Jump(float gain) noexcept;

    /// Multiplies `frames` frames at `out`, on the way to `gain`. At exactly 1 no sample changes.
    void Apply(float* out, std::size_t frames, float gain) noexcept;

private:
    std::size_t m_frames = 0;
    std::size_t m_done = 0; ///< of the ramp; `m_frames` when there is none
    float m_from = 1.0f;
    float m_gain = 1.0f; ///< where the ramp ends
};

} // namespace velmo::engine
