// What the second object shows to the plugin.
#include "PluginDecoders.h"

extern "C" {

// NOLINTNEXTLINE(readability-identifier-naming): the name that the plugin asks for
__attribute__((visibility("default"))) extern const BASS_DECODER* const BASS_FfmpegDecoder;

} // extern "C"

// NOLINTNEXTLINE(cppcoreguidelines-interfaces-global-init): what it names is a constant
constinit const BASS_DECODER* const BASS_FfmpegDecoder = &velmo::engine::FfmpegDecoder;
