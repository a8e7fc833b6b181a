/// Frames of 1 to 8 channels, in the order of a WAV file, as two channels or one.
///
/// Mono goes to both sides. Of more channels the middle and the surrounding ones are added to the
/// sides at -3 dB, one in the middle to both (after ITU-R BS.775, table 2); the low frequency
/// channel is left out, as that recommendation has it. The sum is scaled so that all channels
/// together at full scale give full scale: it never clips.
#pragma once

#include <cstddef>
#include <cstdint>

namespace velmo::engine {

/// Converts `frames` frames of `channels` (1 to 8; any other count gives silence) from `in` to
/// stereo at `out`. They do not overlap. Any thread, no allocation.
void MapToStereo(const float* in, std::size_t frames, std::uint32_t channels, float* out) noexcept;

/// Converts to one channel at `out`: the mean of the stereo sides. `in` and `out` may be the same.
/// Any thread, no allocation.
void MixToMono(const float* in, std::size_t frames, std::uint32_t channels, float* out) noexcept;

} // namespace velmo::engine
