/// The decoders that the engine itself brings. Constants, never changed: any thread.
#pragma once

#include "decode/DecoderList.h"

namespace velmo::engine {

/// RIFF, RIFX, RF64 and extensible WAV: integer and float PCM, A-law, mu-law, ADPCM and the rest of
/// what libsndfile reads.
extern const BuiltinDecoder WavDecoder;

/// AIFF and AIFF-C.
extern const BuiltinDecoder AiffDecoder;

/// MPEG 1, 2 and 2.5, layers 1 to 3, decoded by libmpg123 without the encoder's padding.
extern const BuiltinDecoder MpegDecoder;

/// Vorbis in Ogg.
extern const BuiltinDecoder VorbisDecoder;

/// Tracker modules: MOD, XM, S3M, IT, MTM, also inside UMX and MO3; rendered at the device's rate.
extern const BuiltinDecoder ModuleDecoder;

} // namespace velmo::engine
