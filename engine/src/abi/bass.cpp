// The C functions. Each is the engine's operation of the same name behind a guard: no exception
// leaves, and the calling thread's code is set.

#include "bass.h"

#include "Guarded.h"
#include "PathArgument.h"

#include <limits>
#include <optional>
#include <utility>

namespace {

using velmo::engine::Channel;
using velmo::engine::Guarded;
using velmo::engine::Result;
using velmo::engine::Session;
using velmo::engine::SourceKind;
using velmo::engine::Succeeds;
using velmo::engine::TheEngine;

constexpr DWORD Version = 0x02040000;
constexpr QWORD NoPosition = std::numeric_limits<QWORD>::max();

/// What `action` makes of a channel, or `failed`.
template<class Value, class Action>
Value OfChannel(DWORD handle, Value failed, Action action) noexcept
{
    Value value = failed;
    const int code = Guarded([&] {
        return TheEngine().WithChannel(handle, [&](Channel& channel, Session& session) -> int {
            value = action(channel, session);
            return BASS_OK;
        });
    });
    return code == BASS_OK ? value : failed;
}

/// A handle, or 0.
DWORD Open(SourceKind kind, bool refused, const void* file, DWORD flags) noexcept
{
    DWORD handle = 0;
    Guarded([&]() -> int {
        if (const int code = TheEngine().CheckInitialised(); code != BASS_OK)
            return code;
        std::optional<std::string> path = velmo::engine::PathArgument(file, flags);
        if (refused || !path)
            return BASS_ERROR_ILLPARAM;
        const Result<DWORD> opened = TheEngine().Open(kind, std::move(*path), flags);
        handle = opened.value;
        return opened.error;
    });
    return handle;
}

} // namespace

DWORD BASS_GetVersion() noexcept
{
    return Version;
}

int BASS_ErrorGetCode() noexcept
{
    return velmo::engine::LastError();
}

BOOL BASS_Init(int device, DWORD freq, DWORD flags, void* /*win*/, void* /*reserved*/) noexcept
{
    return Succeeds([=] { return TheEngine().Init(device, freq, flags); });
}

BOOL BASS_Free() noexcept
{
    return Succeeds([] { return TheEngine().Free(); });
}

BOOL BASS_Stop() noexcept
{
    return Succeeds([] { return TheEngine().Stop(); });
}

BOOL BASS_SetConfig(DWORD option, DWORD value) noexcept
{
    return Succeeds([=] { return TheEngine().SetConfig(option, value); });
}

float BASS_GetVolume() noexcept
{
    float volume = -1;
    Guarded([&] {
        const Result<float> result = TheEngine().Volume();
        if (result)
            volume = result.value;
        return result.error;
    });
    return volume;
}

BOOL BASS_SetVolume(float volume) noexcept
{
    return Succeeds([=] { return TheEngine().SetVolume(volume); });
}

HSTREAM
BASS_StreamCreateFile(BOOL mem, const void* file, QWORD offset, QWORD length, DWORD flags) noexcept
{
    return Open(SourceKind::Stream, mem != 0 || offset != 0 || length != 0, file, flags);
}

HSTREAM BASS_StreamCreateURL(
    const char* url, DWORD /*offset*/, DWORD /*flags*/, void* /*proc*/, void* /*user*/) noexcept
{
    Guarded([=]() -> int {
        if (const int code = TheEngine().CheckInitialised(); code != BASS_OK)
            return code;
        return url == nullptr ? BASS_ERROR_ILLPARAM : BASS_ERROR_FILEOPEN;
    });
    return 0;
}

HMUSIC
BASS_MusicLoad(
    BOOL mem, const void* file, QWORD offset, DWORD length, DWORD flags, DWORD /*freq*/) noexcept
{
    return Open(SourceKind::Music, mem != 0 || offset != 0 || length != 0, file, flags);
}

BOOL BASS_StreamFree(HSTREAM handle) noexcept
{
    return Succeeds([=] { return TheEngine().FreeChannel(SourceKind::Stream, handle); });
}

BOOL BASS_MusicFree(HMUSIC handle) noexcept
{
    return Succeeds([=] { return TheEngine().FreeChannel(SourceKind::Music, handle); });
}

BOOL BASS_ChannelPlay(DWORD handle, BOOL restart) noexcept
{
    return Succeeds([=] {
        return TheEngine().WithChannel(handle, [=](Channel& channel, Session& session) -> int {
            channel.Play(session.Decoder(), restart != 0);
            return BASS_OK;
        });
    });
}

BOOL BASS_ChannelPause(DWORD handle) noexcept
{
    return Succeeds([=] {
        return TheEngine().WithChannel(handle, [](Channel& channel, Session& session) -> int {
            return channel.Pause(session.Decoder()) ? BASS_OK : BASS_ERROR_NOPLAY;
        });
    });
}

BOOL BASS_ChannelStop(DWORD handle) noexcept
{
    return Succeeds([=] { return TheEngine().StopChannel(handle); });
}

DWORD BASS_ChannelIsActive(DWORD handle) noexcept
{
    const int kept = velmo::engine::LastError();
    const DWORD activity =
        OfChannel(handle, DWORD{BASS_ACTIVE_STOPPED}, [](const Channel& channel, const Session&) {
            return channel.Activity();
        });
    velmo::engine::SetLastError(kept);
    return activity;
}

QWORD BASS_ChannelGetPosition(DWORD handle, DWORD mode) noexcept
{
    QWORD position = NoPosition;
    Guarded([&] {
        return TheEngine().WithChannel(handle,
                                       [&](const Channel& channel, const Session& session) -> int {
                                           if (mode != BASS_POS_BYTE)
                                               return BASS_ERROR_NOTAVAIL;
                                           position = channel.PositionBytes(session.HeardFrames());
                                           return BASS_OK;
                                       });
    });
    return position;
}

BOOL BASS_ChannelSetPosition(DWORD handle, QWORD position, DWORD mode) noexcept
{
    return Succeeds([=] {
        return TheEngine().WithChannel(handle, [=](Channel& channel, Session& session) -> int {
            if (mode != BASS_POS_BYTE)
                return BASS_ERROR_NOTAVAIL;
            return channel.Seek(session.Decoder(), position) ? BASS_OK : BASS_ERROR_POSITION;
        });
    });
}

QWORD BASS_ChannelGetLength(DWORD handle, DWORD mode) noexcept
{
    QWORD length = NoPosition;
    Guarded([&] {
        return TheEngine().WithChannel(handle, [&](const Channel& channel, const Session&) -> int {
            if (mode != BASS_POS_BYTE)
                return BASS_ERROR_NOTAVAIL;
            length = channel.LengthBytes();
            return BASS_OK;
        });
    });
    return length;
}

double BASS_ChannelBytes2Seconds(DWORD handle, QWORD position) noexcept
{
    return OfChannel(handle, -1.0, [=](const Channel& channel, const Session&) {
        return channel.Seconds(position);
    });
}

BOOL BASS_ChannelGetInfo(DWORD handle, BASS_CHANNELINFO* info) noexcept
{
    return Succeeds([=] {
        return TheEngine().WithChannel(handle, [=](const Channel& channel, const Session&) -> int {
            if (info == nullptr)
                return BASS_ERROR_ILLPARAM;
            *info = channel.Info();
            return BASS_OK;
        });
    });
}

BOOL BASS_ChannelGetAttribute(DWORD handle, DWORD attribute, float* value) noexcept
{
    return Succeeds([=] {
        return TheEngine().WithChannel(handle, [=](const Channel& channel, const Session&) -> int {
            if (attribute != BASS_ATTRIB_FREQ || value == nullptr)
                return BASS_ERROR_ILLPARAM;
            *value = static_cast<float>(channel.Info().freq);
            return BASS_OK;
        });
    });
}
