/// The decoders that the plugins bring. Constants, never changed: any thread.
#pragma once

#include "bass_plugin.h"

namespace velmo::engine {

/// FLAC, in its own container and in Ogg, by libFLAC.
extern const BASS_DECODER FlacDecoder;

/// Opus in Ogg, by libopusfile: always at 48 kHz.
extern const BASS_DECODER OpusDecoder;

/// WavPack: integers, floats, lossy files and DSD, which comes as PCM; by libwavpack.
extern const BASS_DECODER WavPackDecoder;

/// What FFmpeg's libraries decode of: AAC, AC-3, ALAC, APE, Musepack, TTA, WMA.
extern const BASS_DECODER FfmpegDecoder;

} // namespace velmo::engine
