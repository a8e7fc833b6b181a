#include "PluginDecoders.h"
#include "PluginExport.h"
#include "bass.h"

#include <array>

namespace {

constexpr std::array Formats = {
    BASS_PLUGINFORM{.ctype = BASS_CTYPE_STREAM_FLAC,     .name = "FLAC",     .exts = "*.flac;*.fla"},
    BASS_PLUGINFORM{.ctype = BASS_CTYPE_STREAM_FLAC_OGG, .name = "Ogg FLAC", .exts = "*.oga"       },
};

} // namespace

// NOLINTNEXTLINE(cppcoreguidelines-interfaces-global-init): what it names is a constant
constinit const BASS_PLUGIN BASS_PluginTable =
    velmo::engine::PluginTable(Formats, velmo::engine::FlacDecoder);
