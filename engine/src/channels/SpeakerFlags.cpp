#include "SpeakerFlags.h"

#include <optional>

namespace velmo::engine {

namespace {

/// Empty for a number that names no pair.
std::optional<std::size_t> PairOf(DWORD flags) noexcept
{
    constexpr DWORD SideBits = BASS_SPEAKER_LEFT | BASS_SPEAKER_RIGHT;
    switch (flags & BASS_SPEAKER_MASK & ~SideBits) {
    case BASS_SPEAKER_FRONT: return 0;
    case BASS_SPEAKER_CENLFE: return CentrePair;
    case BASS_SPEAKER_REAR: return 2;
    case BASS_SPEAKER_SIDE: return 3;
    default: return std::nullopt;
    }
}

} // namespace

SpeakerRoute RouteOf(DWORD flags, std::uint32_t channels) noexcept
{
    const std::optional<std::size_t> pair = PairOf(flags);
    if (!pair || *pair >= channels / 2)
        return {};
    const bool left = (flags & BASS_SPEAKER_LEFT) != 0;
    const bool right = (flags & BASS_SPEAKER_RIGHT) != 0;
    using Sides = SpeakerRoute::Sides;
    const Sides one = left ? Sides::Left : Sides::Right;
    return {.pair = *pair, .sides = left == right ? Sides::Both : one};
}

} // namespace velmo::engine
