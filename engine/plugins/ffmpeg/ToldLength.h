/// How long a track is by what its container tells.
#pragma once

#include "FfmpegFile.h"

#include <cstdint>

namespace velmo::engine {

/// What decoding has given first.
struct FirstFrame
{
    std::int64_t firstTime = 0;   ///< in the track's unit, or AV_NOPTS_VALUE
    std::uint32_t sampleRate = 0; ///< Hz
};

/// Frames from the first that decoding gives to the end of the track, without the padding at the
/// end where the container says that there is some; 0 if it tells nothing. `file` holds the first
/// frame.
std::uint64_t ToldLength(const FfmpegFile& file,
                         ContainerKind kind,
                         const FirstFrame& first) noexcept;

} // namespace velmo::engine
