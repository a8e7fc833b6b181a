/// What a plugin shows to the engine.
#pragma once

#include "bass_plugin.h"

#include <cstdint>
#include <span>

extern "C" {

/// The one object that a plugin shows to the outside; each plugin has its own.
// NOLINTNEXTLINE(readability-identifier-naming): the name that the engine asks for
__attribute__((visibility("default"))) extern const BASS_PLUGIN BASS_PluginTable;

} // extern "C"

namespace velmo::engine {

/// The table of a plugin of ours; `formats` and `decoder` are constants that live as long as it.
constexpr BASS_PLUGIN PluginTable(std::span<const BASS_PLUGINFORM> formats,
                                  const BASS_DECODER& decoder)
{
    constexpr std::uint32_t Version = 0x02040000;
    return {.abi = BASS_PLUGIN_ABI,
            .size = sizeof(BASS_PLUGIN),
            .version = Version,
            .formatCount = static_cast<std::uint32_t>(formats.size()),
            .formats = formats.data(),
            .decoder = &decoder};
}

} // namespace velmo::engine
