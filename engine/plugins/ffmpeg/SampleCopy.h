/// Samples as FFmpeg's decoders give them, made those of the engine.
#pragma once

#include <span>

struct AVFrame;

namespace velmo::engine {

/// Whether `CopySamples` knows the frame's format.
bool CanCopySamples(const AVFrame& frame) noexcept;

/// Fills `out`, interleaved, with all samples of `frame`, integers as value / full scale. What is
/// no number becomes 0. Any thread, no allocation.
void CopySamples(const AVFrame& frame, std::span<float> out) noexcept;

} // namespace velmo::engine
