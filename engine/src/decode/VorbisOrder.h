/// Channels of Vorbis and Opus in the order of a WAV file. Any thread, no allocation.
#pragma once

#include <cstddef>
#include <span>

namespace velmo::engine {

/// Which of Vorbis' and Opus' channels, 0 to `channels` - 1, stands at `place` in the order of a
/// WAV file; `channels` is 1 to 8. Vorbis I specification, section 4.3.9.
std::size_t VorbisChannelAt(std::size_t place, std::size_t channels) noexcept;

/// Puts the samples of interleaved frames of `channels` (1 to 8) in that order, in
/// place.
void ToWavOrder(std::span<float> samples, std::size_t channels) noexcept;

} // namespace velmo::engine
