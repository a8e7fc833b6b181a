/// Decoders of the sound engine: the table by which one is described.
///
/// The engine's own decoders and those of its plugins are values of the same kind, `BASS_DECODER`.
/// The engine asks the decoders in turn: first `probe`, which sees the beginning of the file, and
/// only where that says yes, `open`.
///
/// Threads: `probe` and `open` run on the thread that opens a channel; several threads may open at
/// once. The other functions get the value that `open` made and are called by one thread at a time
/// for one such value. Nothing here throws; C++ types and exceptions never cross this line.
#ifndef VELMO_BASS_PLUGIN_H
#define VELMO_BASS_PLUGIN_H

// NOLINTBEGIN(modernize-deprecated-headers,modernize-use-using): a header of C
#include "bass.h"

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/// What kind of channel a decoder makes.
enum
{
    BASS_DECODER_STREAM = 1, ///< recorded sound
    BASS_DECODER_MUSIC = 2   ///< a tracker module
};

/// Why `open` gave nothing; the numbers of `BASS_ErrorGetCode`.
enum
{
    BASS_DECODER_OK = 0,
    BASS_DECODER_CANNOT_OPEN = 2, ///< the file cannot be opened or read
    BASS_DECODER_BAD_FORMAT = 6,  ///< its kind of content is known, but not playable
    BASS_DECODER_NOT_MINE = 41    ///< not a file of this decoder
};

/// How many bytes `probe` gets, where the file has as many.
enum
{
    BASS_DECODER_HEAD = 4096
};

/// What an open file holds.
typedef struct
{
    uint32_t sampleRate; ///< Hz, above 0
    uint32_t channels;   ///< 1 to 8, interleaved in the order of a WAV file
    uint64_t
        lengthFrames; ///< exact count of frames that reading an undamaged file from the start gives
    uint32_t ctype;   ///< kind of content, one of the BASS_CTYPE_ numbers of bass.h
    uint32_t limited; ///< 1: no sample is beyond -1..1, as in files of whole numbers; 0: unknown
} BASS_SOURCE_FORMAT;

typedef struct
{
    const char* name;  ///< as a user reads it: "Ogg Vorbis"
    const char* masks; ///< file masks, joined by ";": "*.ogg;*.oga"
    uint32_t kind;     ///< BASS_DECODER_STREAM or BASS_DECODER_MUSIC

    /// 1 if a file that begins with these bytes may be one of this decoder's, else 0. ID3v2 tags
    /// that stand in front of the file's own beginning are left out. Quick, reads nothing else.
    int (*probe)(const uint8_t* head, size_t size);

    /// Opens the file at `path` (bytes, NUL at the end) at its beginning. `deviceRate` is the rate
    /// in Hz at which a decoder that can choose should give its frames. Fills `format` and gives
    /// the value for the calls below, or null with the reason in `error`.
    void* (*open)(const char* path, uint32_t deviceRate, BASS_SOURCE_FORMAT* format, int* error);

    /// Reads up to `frames` interleaved frames, nominally -1 to 1, into `out`. Fewer than asked
    /// only at the end; 0 is the end. What is damaged is passed over or read as silence.
    size_t (*read)(void* source, float* out, size_t frames);

    /// Moves to `frame`, 0 to the length: the next read begins with exactly that frame. 1, or 0 on
    /// failure.
    int (*seek)(void* source, uint64_t frame);

    void (*close)(void* source);
} BASS_DECODER;

/// Version of `BASS_PLUGIN` and `BASS_DECODER`.
enum
{
    BASS_PLUGIN_ABI = 1
};

/// What a plugin library exports, as an object with the name `BASS_PluginTable`. A plugin
/// shows no unique symbols, so that it can be unmapped: it's built with -fno-gnu-unique, or linked
/// with a version script that hides all but the table.
typedef struct
{
    uint32_t abi;  ///< BASS_PLUGIN_ABI
    uint32_t size; ///< sizeof(BASS_PLUGIN)
    uint32_t version;
    uint32_t formatCount; ///< may be 0
    const BASS_PLUGINFORM* formats;
    const BASS_DECODER* decoder;
} BASS_PLUGIN;
// NOLINTEND(modernize-deprecated-headers,modernize-use-using)

#ifdef __cplusplus
}
#endif

#endif
