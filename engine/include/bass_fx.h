/// The effects' library, libbass_fx.so: what it adds to the engine of bass.h.
///
/// Once it is mapped beside libbass.so, `BASS_ChannelSetFX` knows its effects. It stays mapped.
#ifndef VELMO_BASS_FX_H
#define VELMO_BASS_FX_H

#include "bass.h"

#ifdef __cplusplus
#  define VELMO_NOEXCEPT noexcept
extern "C" {
#else
#  define VELMO_NOEXCEPT
#endif

/// Types of `BASS_ChannelSetFX`.
enum
{
    BASS_FX_BFX_PEAKEQ = 0x10004 ///< peaking filters in a row; its record is `BASS_BFX_PEAKEQ`
};

/// `BASS_BFX_PEAKEQ.lChannel`: every channel. The only one there is.
enum
{
    BASS_BFX_CHANALL = -1
};

/// One band of the equalizer. Setting a band that isn't there yet makes it.
// NOLINTNEXTLINE(modernize-use-using): a header of C
typedef struct
{
    int lBand;        ///< 0 to 63
    float fBandwidth; ///< octaves, where above 0; else `fQ` rules
    float fQ;         ///< quality
    float fCenter;    ///< Hz; from half the device's rate on the band is kept and does nothing
    float fGain;      ///< dB; 0 changes no bit
    int lChannel;     ///< `BASS_BFX_CHANALL`
} BASS_BFX_PEAKEQ;

/// 0x02040000: the high word says which interface this is.
VELMO_BASS_API DWORD BASS_FX_GetVersion(void) VELMO_NOEXCEPT;

#ifdef __cplusplus
}
#endif

#undef VELMO_NOEXCEPT

#endif
