/// What the header of a Musepack file tells of its sound; FFmpeg's libraries tell it rounded.
#pragma once

#include "ContainerKind.h"

#include <cstdint>
#include <optional>
#include <span>

namespace velmo::engine {

struct MusepackSound
{
    std::uint64_t delayFrames = 0;  ///< that decoding gives before the sound
    std::uint64_t lengthFrames = 0; ///< of the sound
};

/// Reads it from what the file begins with; empty where `kind` is another or there is no header.
/// After the format's description, stream versions 7 and 8. Any thread.
std::optional<MusepackSound> TellMusepackSound(ContainerKind kind,
                                               std::span<const std::uint8_t> head) noexcept;

} // namespace velmo::engine
