/// Telling the containers that the plugin opens from all others, by their first bytes.
#pragma once

#include <cstdint>
#include <span>

namespace velmo::engine {

enum class ContainerKind
{
    None,
    Mp4, ///< and QuickTime
    Asf, ///< of WMA
    Ape,
    Musepack7,
    Musepack8,
    Tta,
    Adts, ///< AAC without a container
    Ac3,
    Eac3
};

/// What a file that begins with these bytes is. Of those without magic bytes a second frame has to
/// follow the first. Any thread.
ContainerKind TellContainer(std::span<const std::uint8_t> head) noexcept;

} // namespace velmo::engine
