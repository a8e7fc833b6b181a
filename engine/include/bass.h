/// The sound engine: opens files as channels, decodes, mixes and plays them on one output device.
///
/// Threads. Any thread may call any function, several at once. No call waits for the device or for
/// decoding, but for `BASS_Init`, `BASS_Free` (they open and close the device) and the opening
/// functions, which read the file's beginning on the thread that calls. Decoding and playing run on
/// threads of the engine's own; these block all signals. An output that nothing plays on is
/// stopped: an idle engine wakes up no processor.
///
/// Handles. A channel is named by a number that is never 0 and never given twice in a process, so a
/// handle that is kept after its channel was freed can't reach another one: it fails with
/// `BASS_ERROR_HANDLE` whatever is done with it. With `BASS_STREAM_AUTOFREE` the channel is freed,
/// and its handle invalid, when its last sample has been heard or when it is stopped.
///
/// Errors. Each function but `BASS_ChannelIsActive` and `BASS_ErrorGetCode` sets the calling
/// thread's code: `BASS_OK` on success, else the code that is named with the function. Before
/// `BASS_Init` and after `BASS_Free` each function that needs the device or a channel does nothing
/// and fails with `BASS_ERROR_INIT`. No exception leaves the engine.
///
/// Units. Positions and lengths are bytes of decoded sound as the channel reports it: sample rate x
/// channels x bytes a sample, which are 2, or 1 with `BASS_SAMPLE_8BITS`, or 4 with
/// `BASS_SAMPLE_FLOAT`. They count from the file's beginning. The position is that of the sample
/// which is being heard now, not of the one being decoded or mixed.
///
/// Environment, read by `BASS_Init`:
///     VELMO_AUDIO       unset or empty: the sound card; null: silence on a real clock; wav:PATH: a
///     file at the speed of the clock;
///                       wav-fast:PATH: a file as fast as it can be made
///     VELMO_WAV_FORMAT  f32: such a file holds 32-bit floats; else 16-bit samples
///     VELMO_HOME        directory of the file device-volume, in which the device remembers its
///     volume; if unset
///                       ${XDG_STATE_HOME:-~/.local/state}/velmo-player
#ifndef VELMO_BASS_H
#define VELMO_BASS_H

#include <stdint.h> // NOLINT(modernize-deprecated-headers): a header of C

/// Marks what libbass.so shows to the outside.
#define VELMO_BASS_API __attribute__((visibility("default")))

#ifdef __cplusplus
#  define VELMO_NOEXCEPT noexcept
extern "C" {
#else
#  define VELMO_NOEXCEPT
#endif

// NOLINTBEGIN(modernize-use-using): a header of C
typedef uint32_t DWORD;
typedef uint64_t QWORD;
typedef int32_t BOOL;  ///< 0 is false
typedef DWORD HSTREAM; ///< channel of recorded sound
typedef DWORD HMUSIC;  ///< channel of a tracker module
// NOLINTEND(modernize-use-using)

/// Codes of `BASS_ErrorGetCode`.
enum
{
    BASS_OK = 0,
    BASS_ERROR_FILEOPEN = 2,  ///< missing, unreadable or no regular file
    BASS_ERROR_HANDLE = 5,    ///< 0, stale, or of another kind
    BASS_ERROR_FORMAT = 6,    ///< known content that can't be played
    BASS_ERROR_POSITION = 7,  ///< beyond the end
    BASS_ERROR_INIT = 8,      ///< `BASS_Init` has not been called
    BASS_ERROR_ALREADY = 14,  ///< initialised already
    BASS_ERROR_ILLPARAM = 20, ///< illegal argument
    BASS_ERROR_DEVICE = 23,   ///< no such device, or it can't be opened
    BASS_ERROR_NOPLAY = 24,   ///< not playing
    BASS_ERROR_NOTAVAIL = 37, ///< not available
    BASS_ERROR_FILEFORM = 41, ///< content of no known format
    BASS_ERROR_UNKNOWN = -1   ///< out of memory and the like
};

/// Flags of `BASS_Init`.
enum
{
    BASS_DEVICE_8BITS = 1,      ///< what is played is rounded to 8 bits
    BASS_DEVICE_MONO = 2,       ///< both sides play their mean
    BASS_DEVICE_3D = 4,         ///< accepted
    BASS_DEVICE_LATENCY = 256,  ///< accepted
    BASS_DEVICE_SPEAKERS = 2048 ///< accepted: everything goes to the front speakers
};

/// Flags of the opening functions.
enum
{
    BASS_SAMPLE_8BITS = 1,   ///< positions count 8-bit samples; the sound is the same
    BASS_SAMPLE_MONO = 2,    ///< mixed down to one channel; without effect beside `BASS_SAMPLE_3D`
    BASS_SAMPLE_3D = 8,      ///< source and listener at one place: passes through
    BASS_SAMPLE_FLOAT = 256, ///< positions count 32-bit samples
    BASS_MUSIC_RAMP = 0x200, ///< accepted
    BASS_MUSIC_SURROUND = 0x800,   ///< accepted
    BASS_STREAM_AUTOFREE = 0x40000 ///< freed at its end and when stopped
};

/// The path is UTF-16; a name's byte that is no UTF-8 is given as U+DC80 to U+DCFF.
/// A macro, since no enumerator of C holds it.
// NOLINTNEXTLINE(cppcoreguidelines-macro-usage)
#define BASS_UNICODE 0x80000000U

/// Options of `BASS_SetConfig`. Those without words are only stored.
enum
{
    BASS_CONFIG_BUFFER =
        0, ///< decoded ahead of playing, in ms, clamped to 10 to 5000; for channels opened later
    BASS_CONFIG_CURVE_VOL = 7, ///< not 0: the volume v plays with the gain v x v
    BASS_CONFIG_CURVE_PAN = 8,
    BASS_CONFIG_FLOATDSP = 9,
    BASS_CONFIG_3DALGORITHM = 10,
    BASS_CONFIG_NET_TIMEOUT = 11,
    BASS_CONFIG_NET_BUFFER = 12
};

/// What `BASS_ChannelIsActive` gives.
enum
{
    BASS_ACTIVE_STOPPED = 0, ///< never started, stopped, at its end, or no channel
    BASS_ACTIVE_PLAYING = 1,
    BASS_ACTIVE_STALLED = 2, ///< playing, but decoding doesn't keep up
    BASS_ACTIVE_PAUSED = 3
};

/// Attributes of `BASS_ChannelGetAttribute`.
enum
{
    BASS_ATTRIB_FREQ = 1 ///< sample rate in Hz
};

/// Modes of `BASS_ChannelGetPosition` and its like.
enum
{
    BASS_POS_BYTE = 0
};

/// Kinds of content. One bit tells a module from recorded sound.
enum
{
    BASS_CTYPE_STREAM = 0x10000,
    BASS_CTYPE_STREAM_OGG = 0x10002,
    BASS_CTYPE_STREAM_MP1 = 0x10003,
    BASS_CTYPE_STREAM_MP2 = 0x10004,
    BASS_CTYPE_STREAM_MP3 = 0x10005,
    BASS_CTYPE_STREAM_AIFF = 0x10006,
    BASS_CTYPE_STREAM_WAV = 0x10007,
    BASS_CTYPE_STREAM_FLAC = 0x10008,
    BASS_CTYPE_MUSIC = 0x20000
};

/// What `BASS_ChannelGetInfo` tells of a channel.
// NOLINTNEXTLINE(modernize-use-using): a header of C
typedef struct
{
    DWORD freq;           ///< sample rate in Hz
    DWORD chans;          ///< channels of the file; 1 where they are mixed down
    DWORD flags;          ///< as given at the opening, without `BASS_UNICODE`
    DWORD ctype;          ///< `BASS_CTYPE_`
    const char* filename; ///< bytes of the path; valid until a call frees the channel,
                          ///< and until `BASS_Free` where it frees itself
} BASS_CHANNELINFO;

/// 0x02040000: the high word says which interface this is. Changes no code.
VELMO_BASS_API DWORD BASS_GetVersion(void) VELMO_NOEXCEPT;

/// The code of this thread's last call. `BASS_OK` before the first.
VELMO_BASS_API int BASS_ErrorGetCode(void) VELMO_NOEXCEPT;

/// Opens the output. `device` -1 or 1 is the default one, the only one; `freq` in Hz, taken to 8000
/// to 192000 (0 and negative numbers to 8000); `flags` `BASS_DEVICE_`; the window and the last
/// argument are not used. Codes: `BASS_ERROR_ALREADY`, `BASS_ERROR_DEVICE`.
VELMO_BASS_API BOOL BASS_Init(int device, DWORD freq, DWORD flags, void* win, void* reserved)
    VELMO_NOEXCEPT;

/// Frees every channel and closes the output. Options and the device's volume survive. Waits for a
/// read of a file that is under way, without a limit: one from a dead network share keeps it.
/// Codes: `BASS_ERROR_INIT`.
VELMO_BASS_API BOOL BASS_Free(void) VELMO_NOEXCEPT;

/// Pauses the output; channels keep their state. The next `BASS_ChannelPlay` starts it again.
/// Stores the device's volume, as `BASS_Free` does. Codes: `BASS_ERROR_INIT`.
VELMO_BASS_API BOOL BASS_Stop(void) VELMO_NOEXCEPT;

/// Sets an option. Works at any time, before `BASS_Init` too. Codes: `BASS_ERROR_ILLPARAM` for an
/// unknown one.
VELMO_BASS_API BOOL BASS_SetConfig(DWORD option, DWORD value) VELMO_NOEXCEPT;

/// The device's volume, exactly as it was set: 0 to 1. -1 on failure. Codes: `BASS_ERROR_INIT`.
VELMO_BASS_API float BASS_GetVolume(void) VELMO_NOEXCEPT;

/// Sets the device's volume, 0 to 1, which outlives the process; a 0 does not.
/// Codes: `BASS_ERROR_INIT`, `BASS_ERROR_ILLPARAM` (outside: nothing changes).
VELMO_BASS_API BOOL BASS_SetVolume(float volume) VELMO_NOEXCEPT;

/// Opens a file of recorded sound; modules are refused. `mem`, `offset` and `length` have to be 0.
/// `file` is the path: bytes, or UTF-16 with `BASS_UNICODE`. Gives 0 on failure. Codes:
/// `BASS_ERROR_INIT`, `BASS_ERROR_ILLPARAM`, `BASS_ERROR_FILEOPEN`, `BASS_ERROR_FORMAT`,
/// `BASS_ERROR_FILEFORM`.
VELMO_BASS_API HSTREAM BASS_StreamCreateFile(
    BOOL mem, const void* file, QWORD offset, QWORD length, DWORD flags) VELMO_NOEXCEPT;

/// Always gives 0: the network is never touched. Codes: `BASS_ERROR_INIT`; `BASS_ERROR_ILLPARAM`
/// without a text, else `BASS_ERROR_FILEOPEN`.
VELMO_BASS_API HSTREAM BASS_StreamCreateURL(
    const char* url, DWORD offset, DWORD flags, void* proc, void* user) VELMO_NOEXCEPT;

/// Opens a tracker module; recorded sound is refused. As `BASS_StreamCreateFile`; the module is
/// rendered at the device's rate, `freq` is not used.
VELMO_BASS_API HMUSIC BASS_MusicLoad(
    BOOL mem, const void* file, QWORD offset, DWORD length, DWORD flags, DWORD freq) VELMO_NOEXCEPT;

/// Frees a channel of recorded sound, which goes silent at once. Codes: `BASS_ERROR_INIT`,
/// `BASS_ERROR_HANDLE` (a module's handle too).
VELMO_BASS_API BOOL BASS_StreamFree(HSTREAM handle) VELMO_NOEXCEPT;

/// Frees a module, which goes silent at once. Codes: `BASS_ERROR_INIT`, `BASS_ERROR_HANDLE` (a
/// stream's handle too).
VELMO_BASS_API BOOL BASS_MusicFree(HMUSIC handle) VELMO_NOEXCEPT;

/// Starts the channel, or goes on where it was paused; with `restart`, and after its end, from the
/// beginning. Returns at once; `BASS_ChannelIsActive` says playing from then on. Codes:
/// `BASS_ERROR_INIT`, `BASS_ERROR_HANDLE`.
VELMO_BASS_API BOOL BASS_ChannelPlay(DWORD handle, BOOL restart) VELMO_NOEXCEPT;

/// Holds a playing channel. Codes: `BASS_ERROR_INIT`, `BASS_ERROR_HANDLE`, `BASS_ERROR_NOPLAY`.
VELMO_BASS_API BOOL BASS_ChannelPause(DWORD handle) VELMO_NOEXCEPT;

/// Stops the channel, which goes silent at once, and rewinds it; frees it if it was opened with
/// `BASS_STREAM_AUTOFREE`, also if it never started. Codes: `BASS_ERROR_INIT`, `BASS_ERROR_HANDLE`.
VELMO_BASS_API BOOL BASS_ChannelStop(DWORD handle) VELMO_NOEXCEPT;

/// One of `BASS_ACTIVE_`: playing until the last sample has been heard; stopped for a handle of
/// nothing. Changes no code.
VELMO_BASS_API DWORD BASS_ChannelIsActive(DWORD handle) VELMO_NOEXCEPT;

/// Position in bytes of what is heard now; all ones on failure. `mode` is `BASS_POS_BYTE`.
/// Codes: `BASS_ERROR_INIT`, `BASS_ERROR_HANDLE`, `BASS_ERROR_NOTAVAIL` for another mode.
VELMO_BASS_API QWORD BASS_ChannelGetPosition(DWORD handle, DWORD mode) VELMO_NOEXCEPT;

/// Moves to a position in bytes, taken down to a whole frame. What was mixed ahead is dropped; the
/// new place is reported from now on. Codes: `BASS_ERROR_INIT`, `BASS_ERROR_HANDLE`,
/// `BASS_ERROR_NOTAVAIL` for another mode, `BASS_ERROR_POSITION` beyond the end (nothing changes).
VELMO_BASS_API BOOL BASS_ChannelSetPosition(DWORD handle,
                                            QWORD position,
                                            DWORD mode) VELMO_NOEXCEPT;

/// Exact length in bytes; all ones on failure. Codes: as `BASS_ChannelGetPosition`.
VELMO_BASS_API QWORD BASS_ChannelGetLength(DWORD handle, DWORD mode) VELMO_NOEXCEPT;

/// Seconds that `position` bytes of the channel take; -1 on failure. Codes: `BASS_ERROR_INIT`,
/// `BASS_ERROR_HANDLE`.
VELMO_BASS_API double BASS_ChannelBytes2Seconds(DWORD handle, QWORD position) VELMO_NOEXCEPT;

/// Fills `info`, which stays as it is on failure. Codes: `BASS_ERROR_INIT`, `BASS_ERROR_HANDLE`,
/// `BASS_ERROR_ILLPARAM` without a place.
VELMO_BASS_API BOOL BASS_ChannelGetInfo(DWORD handle, BASS_CHANNELINFO* info) VELMO_NOEXCEPT;

/// Gives an attribute, one of `BASS_ATTRIB_`. Codes: `BASS_ERROR_INIT`, `BASS_ERROR_HANDLE`,
/// `BASS_ERROR_ILLPARAM` for an unknown one or without a place.
VELMO_BASS_API BOOL BASS_ChannelGetAttribute(DWORD handle,
                                             DWORD attribute,
                                             float* value) VELMO_NOEXCEPT;

#ifdef __cplusplus
}
#endif

#undef VELMO_NOEXCEPT

#endif
