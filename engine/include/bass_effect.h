/// Effects of the sound engine: the table by which one is described, and how it is brought in.
///
/// Threads. `create`, `set`, `get` and `destroy` are called by any thread, one at a time for one
/// effect. `process` and `reset` are called by the thread that mixes, at the same time as `set` and
/// `get`: they must not wait, lock, allocate or free. Nothing here throws; C++ types and exceptions
/// never cross this line.
#ifndef VELMO_BASS_EFFECT_H
#define VELMO_BASS_EFFECT_H

#include "bass.h"

#include <stddef.h> // NOLINT(modernize-deprecated-headers): a header of C

#ifdef __cplusplus
extern "C" {
#endif

/// Version of `BASS_EFFECT`.
enum
{
    BASS_EFFECT_ABI = 1
};

// NOLINTNEXTLINE(modernize-use-using): a header of C
typedef struct
{
    uint32_t abi;  ///< `BASS_EFFECT_ABI`
    uint32_t size; ///< sizeof(BASS_EFFECT)
    DWORD type;    ///< of `BASS_ChannelSetFX`

    /// Makes one for frames of two samples at `sampleRate` Hz; null without memory.
    void* (*create)(uint32_t sampleRate);

    /// Takes a record of the effect's parameters: `BASS_OK` or a code of `BASS_ErrorGetCode`. What
    /// is set before the first `process` holds from its first frame on; what is set later is
    /// reached without a click.
    int (*set)(void* effect, const void* record);

    /// Fills the record: `BASS_OK`, or a code, and the record stays as it is.
    int (*get)(void* effect, void* record);

    /// Changes `frames` interleaved frames in place.
    void (*process)(void* effect, float* samples, size_t frames);

    /// Forgets the sound so far: the next frames have no connection with it.
    void (*reset)(void* effect);

    void (*destroy)(void* effect);
} BASS_EFFECT;

/// Brings an effect in, for `BASS_ChannelSetFX`; another of the same type is replaced. The table
/// must stay mapped for the process's life. Codes: `BASS_ERROR_ILLPARAM` without a table or for one
/// of another version.
VELMO_BASS_API BOOL BASS_RegisterEffect(const BASS_EFFECT* effect);

#ifdef __cplusplus
}
#endif

#endif
