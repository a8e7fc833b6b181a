#pragma once

#include "bass.h"

#include "mixer/SpeakerRoute.h"

namespace velmo::engine {

/// The speakers that `flags` of `BASS_SPEAKER_` ask for, on a device that was opened with
/// `channels` of them; 0 if it wasn't opened with its speakers. What it hasn't got, or makes no
/// sense, goes to the front pair.
[[nodiscard]] SpeakerRoute RouteOf(DWORD flags, std::uint32_t channels) noexcept;

} // namespace velmo::engine
