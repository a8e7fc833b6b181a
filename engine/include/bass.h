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
/// Clicks. Where sound is cut short - a pause, a stop, a seek, a channel that is freed - it fades
/// out over 5 ms, and fades in where it goes on or begins inside a file; the frames of a fade count
/// like all others. A file's beginning and its end stay as they are. A volume is reached over 20
/// ms, an effect comes and goes over 10 ms. `BASS_Stop` and `BASS_Free` fade nothing.
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
///     VELMO_WAV_CHANNELS  2, 6 or 8: how many channels such a file and the null output have, as a
///     device of that many speakers
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
typedef DWORD HFX;     ///< effect on a channel
typedef DWORD HPLUGIN; ///< library of decoders
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
    BASS_DEVICE_SPEAKERS = 2048 ///< opened with all the speakers that the device has
};

/// Flags of the opening functions.
enum
{
    BASS_SAMPLE_8BITS = 1,   ///< positions count 8-bit samples; the sound is the same
    BASS_SAMPLE_MONO = 2,    ///< mixed down to one channel; without effect beside `BASS_SAMPLE_3D`
    BASS_SAMPLE_3D = 8,      ///< source and listener at one place: passes through, and is sent to
                             ///< the reverb
    BASS_SAMPLE_FLOAT = 256, ///< positions count 32-bit samples
    BASS_MUSIC_RAMP = 0x200, ///< accepted
    BASS_MUSIC_SURROUND = 0x800,   ///< accepted
    BASS_STREAM_AUTOFREE = 0x40000 ///< freed at its end and when stopped
};

/// Flags of the opening functions: which speakers the channel goes to, if the device was opened
/// with them; else the front ones. A pair, or with `BASS_SPEAKER_LEFT` or `_RIGHT` one of the pair,
/// which then plays the mean of both sides.
enum
{
    BASS_SPEAKER_FRONT = 0x1000000,
    BASS_SPEAKER_REAR = 0x2000000,
    BASS_SPEAKER_CENLFE = 0x3000000, ///< left is the centre, right the low frequency one
    BASS_SPEAKER_SIDE = 0x4000000,
    BASS_SPEAKER_LEFT = 0x10000000,
    BASS_SPEAKER_RIGHT = 0x20000000,
    BASS_SPEAKER_MASK = 0x3F000000
};

/// The path is UTF-16; a name's byte that is no UTF-8 is given as U+DC80 to U+DCFF.
/// A macro, since no enumerator of C holds it.
// NOLINTNEXTLINE(cppcoreguidelines-macro-usage)
#define BASS_UNICODE 0x80000000U

/// Options of `BASS_SetConfig`, and the one of `BASS_SetConfigPtr`. Those without words are only
/// stored. What switches something on is any number but 0.
enum
{
    BASS_CONFIG_BUFFER =
        0, ///< decoded ahead of playing, in ms, clamped to 10 to 5000; for channels opened later
    BASS_CONFIG_CURVE_VOL = 7, ///< not 0: the volume v plays with the gain v x v
    BASS_CONFIG_CURVE_PAN = 8,
    BASS_CONFIG_FLOATDSP = 9, ///< on or off makes no difference: effects always work on floats
    BASS_CONFIG_3DALGORITHM = 10,
    BASS_CONFIG_NET_TIMEOUT = 11,
    BASS_CONFIG_NET_BUFFER = 12,
    BASS_CONFIG_NET_PROXY = 17 ///< a text
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

/// What `BASS_ChannelGetData` is asked for.
enum
{
    BASS_DATA_FLOAT = 0x40000000, ///< with a count of bytes: samples
};
/// The spectrum: 1024 floats. A macro, since no enumerator of C holds it.
// NOLINTNEXTLINE(cppcoreguidelines-macro-usage)
#define BASS_DATA_FFT2048 0x80000003U

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
    BASS_CTYPE_STREAM_FLAC = 0x10900,
    BASS_CTYPE_STREAM_FLAC_OGG = 0x10901,
    BASS_CTYPE_STREAM_OPUS = 0x11200,
    BASS_CTYPE_STREAM_WV = 0x10500,
    BASS_CTYPE_STREAM_AAC = 0x10B00,
    BASS_CTYPE_STREAM_MP4 = 0x10B01,
    BASS_CTYPE_STREAM_ALAC = 0x10E00,
    BASS_CTYPE_STREAM_WMA = 0x10300,
    BASS_CTYPE_STREAM_APE = 0x10700,
    BASS_CTYPE_STREAM_MPC = 0x10A00,
    BASS_CTYPE_STREAM_TTA = 0x10F00,
    BASS_CTYPE_STREAM_AC3 = 0x11000,
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

/// What `BASS_GetInfo` tells of the open device. The sizes of a sound card's own memory are 0.
// NOLINTNEXTLINE(modernize-use-using): a header of C
typedef struct
{
    DWORD flags;     ///< 0x10: any sample rate; 0xF00: 8 and 16 bits, mono and stereo
    DWORD hwsize;    ///< 0
    DWORD hwfree;    ///< 0
    DWORD freesam;   ///< 0
    DWORD free3d;    ///< 0
    DWORD minrate;   ///< lowest sample rate in Hz
    DWORD maxrate;   ///< highest one
    BOOL eax;        ///< 1: there is a reverb
    DWORD minbuf;    ///< least length of `BASS_CONFIG_BUFFER` without gaps, in ms
    DWORD dsver;     ///< 0
    DWORD latency;   ///< ms from the mixer to the ear, measured
    DWORD initflags; ///< as given to `BASS_Init`
    DWORD speakers;  ///< channels of the device
    DWORD freq;      ///< its sample rate in Hz
} BASS_INFO;

/// What `BASS_GetDeviceInfo` tells.
// NOLINTNEXTLINE(modernize-use-using): a header of C
typedef struct
{
    const char* name;   ///< as a user reads it; valid until the next call on this thread
    const char* driver; ///< "PulseAudio", "ALSA", "null", "wav" and the like; valid as `name`
    DWORD flags;        ///< `BASS_DEVICE_ENABLED` and the like
} BASS_DEVICEINFO;

/// Bits of `BASS_DEVICEINFO.flags`.
enum
{
    BASS_DEVICE_ENABLED = 1,
    BASS_DEVICE_DEFAULT = 2,
    BASS_DEVICE_INIT = 4 ///< it is open
};

/// One format of a plugin.
// NOLINTNEXTLINE(modernize-use-using): a header of C
typedef struct
{
    DWORD ctype;      ///< `BASS_CTYPE_`
    const char* name; ///< as a user reads it
    const char* exts; ///< file masks, joined by ";": "*.a;*.b"
} BASS_PLUGINFORM;

/// What `BASS_PluginGetInfo` tells.
// NOLINTNEXTLINE(modernize-use-using): a header of C
typedef struct
{
    DWORD version;
    DWORD formatc; ///< how many formats; may be 0
    const BASS_PLUGINFORM* formats;
} BASS_PLUGININFO;

/// What the engine has counted, for tests, measurements and reports.
// NOLINTNEXTLINE(modernize-use-using): a header of C
typedef struct
{
    QWORD underruns; ///< blocks in which a playing channel had too little decoded sound, since
                     ///< `BASS_Init`
    QWORD clipped;   ///< samples at the output's end that were cut to -1..1, since `BASS_Init`
    QWORD rendered;  ///< frames given to the device since `BASS_Init`
} BASS_STATISTICS;

/// 0x02040000: the high word says which interface this is. Changes no code.
VELMO_BASS_API DWORD BASS_GetVersion(void) VELMO_NOEXCEPT;

/// The code of this thread's last call. `BASS_OK` before the first.
VELMO_BASS_API int BASS_ErrorGetCode(void) VELMO_NOEXCEPT;

/// Opens the output. `device` -1 or 1 is the default one, the only one; `freq` in Hz, taken to 8000
/// to 192000 (0 and negative numbers to 8000); `flags` `BASS_DEVICE_`; the window and the last
/// argument are not used. Codes: `BASS_ERROR_ALREADY`, `BASS_ERROR_DEVICE`.
VELMO_BASS_API BOOL BASS_Init(int device, DWORD freq, DWORD flags, void* win, void* reserved)
    VELMO_NOEXCEPT;

/// Frees every channel and plugin and closes the output. Options and the device's volume survive.
/// Waits for a read of a file that is under way, without a limit: one from a dead network share
/// keeps it. Codes: `BASS_ERROR_INIT`.
VELMO_BASS_API BOOL BASS_Free(void) VELMO_NOEXCEPT;

/// Pauses the output; channels keep their state. The next `BASS_ChannelPlay` starts it again.
/// Stores the device's volume, as `BASS_Free` does. Codes: `BASS_ERROR_INIT`.
VELMO_BASS_API BOOL BASS_Stop(void) VELMO_NOEXCEPT;

/// Sets an option. Works at any time, before `BASS_Init` too. Codes: `BASS_ERROR_ILLPARAM` for an
/// unknown one.
VELMO_BASS_API BOOL BASS_SetConfig(DWORD option, DWORD value) VELMO_NOEXCEPT;

/// Stores a copy of a text option; null is the empty text. Works at any time. Codes:
/// `BASS_ERROR_ILLPARAM` for an unknown one.
VELMO_BASS_API BOOL BASS_SetConfigPtr(DWORD option, const void* value) VELMO_NOEXCEPT;

/// Fills `info` with what the open device is. Its latency is what the device is asked for until
/// something has played. Codes: `BASS_ERROR_INIT`, `BASS_ERROR_ILLPARAM`
/// without a place.
VELMO_BASS_API BOOL BASS_GetInfo(BASS_INFO* info) VELMO_NOEXCEPT;

/// Fills `info` with what device `device` is: 0 is silence, 1 the default device. Works before
/// `BASS_Init` too, and then asks no server: the device's name is that of the kind of output.
/// Codes: `BASS_ERROR_DEVICE` for another number, `BASS_ERROR_ILLPARAM` without a place.
VELMO_BASS_API BOOL BASS_GetDeviceInfo(DWORD device, BASS_DEVICEINFO* info) VELMO_NOEXCEPT;

/// Processor time that decoding and mixing take, in per cent of one core, over the last second or
/// so; 0 before `BASS_Init`. Codes: `BASS_ERROR_INIT`.
VELMO_BASS_API float BASS_GetCPU(void) VELMO_NOEXCEPT;

/// Fills `statistics`. Codes: `BASS_ERROR_INIT`, `BASS_ERROR_ILLPARAM` without a place.
VELMO_BASS_API BOOL BASS_GetStatistics(BASS_STATISTICS* statistics) VELMO_NOEXCEPT;

/// Sets the reverb, which channels with `BASS_SAMPLE_3D` go through: `env`, 0 to 25, is the room
/// (-1 leaves it), `volume` the level of the reverberation (0 to 1, 0 is off), `decay` the seconds
/// in which it fades (0.1 to 20), `damp` how much faster high tones fade (0 to 2). A number below 0
/// leaves what there is, one beyond its range is taken to the nearest. Off until first set, and
/// after `BASS_Free`. Codes: `BASS_ERROR_INIT`, `BASS_ERROR_ILLPARAM` for another room.
VELMO_BASS_API BOOL BASS_SetEAXParameters(int env, float volume, float decay, float damp)
    VELMO_NOEXCEPT;

/// Loads the plugin at the path `file` (bytes, or UTF-16 with `BASS_UNICODE` in `flags`): files
/// opened from now on may be of its formats. Works before `BASS_Init` too. Gives 0 on failure.
/// Codes: `BASS_ERROR_FILEOPEN`, `BASS_ERROR_FILEFORM` (no plugin, or of another version),
/// `BASS_ERROR_ALREADY`, `BASS_ERROR_ILLPARAM` without a path.
VELMO_BASS_API HPLUGIN BASS_PluginLoad(const char* file, DWORD flags) VELMO_NOEXCEPT;

/// What a plugin is; null on failure. Belongs to the engine until the plugin is freed. Codes:
/// `BASS_ERROR_HANDLE`.
VELMO_BASS_API const BASS_PLUGININFO* BASS_PluginGetInfo(HPLUGIN handle) VELMO_NOEXCEPT;

/// Takes a plugin away, all for 0: no file is opened by it any more, and the channels that play
/// through it end. Its library stays mapped until the last of them has been let go of. Codes:
/// `BASS_ERROR_HANDLE`.
VELMO_BASS_API BOOL BASS_PluginFree(HPLUGIN handle) VELMO_NOEXCEPT;

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

/// Frees a channel of recorded sound, which falls silent. Codes: `BASS_ERROR_INIT`,
/// `BASS_ERROR_HANDLE` (a module's handle too).
VELMO_BASS_API BOOL BASS_StreamFree(HSTREAM handle) VELMO_NOEXCEPT;

/// Frees a module, which falls silent. Codes: `BASS_ERROR_INIT`, `BASS_ERROR_HANDLE` (a
/// stream's handle too).
VELMO_BASS_API BOOL BASS_MusicFree(HMUSIC handle) VELMO_NOEXCEPT;

/// Starts the channel, or goes on where it was paused; with `restart`, and after its end, from the
/// beginning. Returns at once; `BASS_ChannelIsActive` says playing from then on. Codes:
/// `BASS_ERROR_INIT`, `BASS_ERROR_HANDLE`.
VELMO_BASS_API BOOL BASS_ChannelPlay(DWORD handle, BOOL restart) VELMO_NOEXCEPT;

/// Holds a playing channel. Codes: `BASS_ERROR_INIT`, `BASS_ERROR_HANDLE`, `BASS_ERROR_NOPLAY`.
VELMO_BASS_API BOOL BASS_ChannelPause(DWORD handle) VELMO_NOEXCEPT;

/// Stops the channel, which falls silent, and rewinds it; frees it if it was opened with
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

/// Copies sound that is being heard into `buffer`; takes none away. Any number of calls see the
/// same; a paused channel gives what was heard last, also after a seek. The sound is that of the
/// channel, after its effects and before its fades, the reverb and the device's volume, as the two
/// front sides at the device's rate; a channel of one side (`BASS_CHANNELINFO.chans` 1) gives one,
/// one of more than two gives its sides and silence for the rest.
///
/// `length` with `BASS_DATA_FLOAT`: that many bytes of interleaved floats from the position on, in
/// whole frames; where not so much has been mixed yet, the latest there are, behind silence if they
/// are too few; less at the end, and never more than the 0.7 s or so that are kept. Gives the count
/// of bytes. `BASS_DATA_FFT2048`: 1024 floats, the magnitudes of
/// a transform of 2048 frames, channels averaged, Hann window: a sine of full scale in the middle
/// of a bin is 1.0 there; bin i is i x (sample rate) / 2048 Hz; gives 4096. -1 on failure, and the
/// buffer stays as it is. Codes: `BASS_ERROR_INIT`, `BASS_ERROR_HANDLE`, `BASS_ERROR_ILLPARAM` for
/// another `length` or without a buffer, `BASS_ERROR_NOPLAY` if it is stopped.
VELMO_BASS_API DWORD BASS_ChannelGetData(DWORD handle, void* buffer, DWORD length) VELMO_NOEXCEPT;

/// Puts an effect on the channel; gives 0 on failure. Effects are run in the order of falling
/// `priority`, those of one priority in the order in which they came. An effect ends with its
/// channel. Codes: `BASS_ERROR_INIT`, `BASS_ERROR_HANDLE`, `BASS_ERROR_ILLPARAM` for a type that no
/// add-on has brought.
VELMO_BASS_API HFX BASS_ChannelSetFX(DWORD handle, DWORD type, int priority) VELMO_NOEXCEPT;

/// Takes an effect off the channel. Codes: `BASS_ERROR_INIT`, `BASS_ERROR_HANDLE`, also where the
/// effect is another channel's.
VELMO_BASS_API BOOL BASS_ChannelRemoveFX(DWORD handle, HFX effect) VELMO_NOEXCEPT;

/// Sets an effect's parameters, a record of the effect's type. Heard from the next block on,
/// without a click. Codes: `BASS_ERROR_INIT`, `BASS_ERROR_HANDLE`, `BASS_ERROR_ILLPARAM` for a
/// record that can't be, or none.
VELMO_BASS_API BOOL BASS_FXSetParameters(HFX effect, const void* record) VELMO_NOEXCEPT;

/// Fills the record with the effect's parameters. Codes: as `BASS_FXSetParameters`; the record then
/// stays as it is.
VELMO_BASS_API BOOL BASS_FXGetParameters(HFX effect, void* record) VELMO_NOEXCEPT;

/// How many samples of the channel, after its effects, were beyond -1..1 so far; all ones on
/// failure. Codes: `BASS_ERROR_INIT`, `BASS_ERROR_HANDLE`.
VELMO_BASS_API QWORD BASS_ChannelGetClipCount(DWORD handle) VELMO_NOEXCEPT;

#ifdef __cplusplus
}
#endif

#undef VELMO_NOEXCEPT

#endif
