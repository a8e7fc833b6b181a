#pragma once

#include "Fade.h"

#include <cstddef>

namespace velmo::engine {

/// The arithmetic of the mixer. Blocks of `frames` frames of two samples; no function waits or
/// allocates.

/// `out` += `in`, `samples` of them.
void AddSamples(float* out, const float* in, std::size_t samples) noexcept;

/// `out` += `in` x the gains of `fade`, of which at least `frames` are left on that way.
void AddFaded(float* out, const float* in, std::size_t frames, Fade& fade, Fade::Way way) noexcept;

/// `wet` becomes what lies between `dry` and itself at the gains of `fade`, of which at least
/// `frames` are left on that way.
void Blend(float* wet, const float* dry, std::size_t frames, Fade& fade, Fade::Way way) noexcept;

/// `out` x `gain`.
void Scale(float* out, std::size_t samples, float gain) noexcept;

/// Both sides become (L + R) / 2.
void MakeMono(float* out, std::size_t frames) noexcept;

/// Adds the mean of both sides of `in` to one side of `out`: 0 left, 1 right.
void AddToSide(float* out, const float* in, std::size_t frames, std::size_t side) noexcept;

/// Puts the frames of `pairs` pairs, the first at `in` and each next one `stride` samples on, into
/// frames of all of them.
void Interleave(float* out,
                const float* in,
                std::size_t stride,
                std::size_t pairs,
                std::size_t frames) noexcept;

/// How many samples lie beyond -1..1.
std::size_t CountBeyond(const float* in, std::size_t samples) noexcept;

} // namespace velmo::engine
