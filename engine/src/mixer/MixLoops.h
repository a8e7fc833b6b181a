#pragma once

#include <cstddef>

namespace velmo::engine {

/// The arithmetic of the mixer. Blocks of `frames` frames of two samples; no function waits or
/// allocates.

/// `out` += `in`, `samples` of them.
void AddSamples(float* out, const float* in, std::size_t samples) noexcept;

/// `out` x `gain`.
void Scale(float* out, std::size_t samples, float gain) noexcept;

/// `out` x a gain that goes in a straight line from `from`, reached before the block, to `to`,
/// reached by its last frame.
void ScaleRamp(float* out, std::size_t frames, float from, float to) noexcept;

/// Both sides become (L + R) / 2.
void MakeMono(float* out, std::size_t frames) noexcept;

} // namespace velmo::engine
