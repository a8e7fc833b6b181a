// The C functions that reach into the sound: effects, reverb, what is heard, and what was counted.

#include "Guarded.h"
#include "bass_effect.h"

#include <limits>
#include <span>

using velmo::engine::Channel;
using velmo::engine::Effect;
using velmo::engine::Guarded;
using velmo::engine::Result;
using velmo::engine::Session;
using velmo::engine::Spectrum;
using velmo::engine::Succeeds;
using velmo::engine::TheEngine;

namespace {

constexpr DWORD NoData = std::numeric_limits<DWORD>::max();
constexpr QWORD NoCount = std::numeric_limits<QWORD>::max();
constexpr DWORD FormBits = 0xC0000000;

} // namespace

DWORD BASS_ChannelGetData(DWORD handle, void* buffer, DWORD length) noexcept
{
    DWORD bytes = NoData;
    Guarded([&] {
        return TheEngine().WithChannel(
            handle, [&](const Channel& channel, const Session& session) -> int {
                const bool spectrum = length == BASS_DATA_FFT2048;
                const bool samples = (length & FormBits) == DWORD{BASS_DATA_FLOAT};
                if (buffer == nullptr || (!spectrum && !samples))
                    return BASS_ERROR_ILLPARAM;
                if (channel.Activity() == BASS_ACTIVE_STOPPED)
                    return BASS_ERROR_NOPLAY;
                auto* const out = static_cast<float*>(buffer);
                if (spectrum) {
                    channel.HeardSpectrum(session.HeardFrames(), session.GetSpectrum(), out);
                    bytes = Spectrum::Bins * sizeof(float);
                } else {
                    const std::span<float> place(out, (length & ~FormBits) / sizeof(float));
                    bytes = static_cast<DWORD>(channel.HeardSamples(session.HeardFrames(), place));
                }
                return BASS_OK;
            });
    });
    return bytes;
}

BOOL BASS_RegisterEffect(const BASS_EFFECT* effect)
{
    return Succeeds([=] { return TheEngine().RegisterEffect(effect); });
}

HFX BASS_ChannelSetFX(DWORD handle, DWORD type, int priority) noexcept
{
    HFX effect = 0;
    Guarded([&] {
        const Result<DWORD> added = TheEngine().AddEffect(handle, type, priority);
        effect = added.value;
        return added.error;
    });
    return effect;
}

BOOL BASS_ChannelRemoveFX(DWORD handle, HFX effect) noexcept
{
    return Succeeds([=] {
        return TheEngine().WithChannel(handle, [=](const Channel& channel, const Session&) -> int {
            return channel.Effects().Remove(effect) ? BASS_OK : BASS_ERROR_HANDLE;
        });
    });
}

BOOL BASS_FXSetParameters(HFX effect, const void* record) noexcept
{
    return Succeeds([=] {
        return TheEngine().WithEffect(effect, [=](Effect& each) -> int {
            return record == nullptr ? static_cast<int>(BASS_ERROR_ILLPARAM) : each.Set(record);
        });
    });
}

BOOL BASS_FXGetParameters(HFX effect, void* record) noexcept
{
    return Succeeds([=] {
        return TheEngine().WithEffect(effect, [=](Effect& each) -> int {
            return record == nullptr ? static_cast<int>(BASS_ERROR_ILLPARAM) : each.Get(record);
        });
    });
}

QWORD BASS_ChannelGetClipCount(DWORD handle) noexcept
{
    QWORD count = NoCount;
    Guarded([&] {
        return TheEngine().WithChannel(handle, [&](const Channel& channel, const Session&) -> int {
            count = channel.ClipCount();
            return BASS_OK;
        });
    });
    return count;
}

BOOL BASS_SetEAXParameters(int env, float volume, float decay, float damp) noexcept
{
    return Succeeds([=] {
        return TheEngine().WithSession([=](Session& session) -> int {
            constexpr int LastRoom = 25;
            if (env < -1 || env > LastRoom)
                return BASS_ERROR_ILLPARAM;
            session.SetReverb(env, volume, decay, damp);
            return BASS_OK;
        });
    });
}

BOOL BASS_GetStatistics(BASS_STATISTICS* statistics) noexcept
{
    return Succeeds([=] {
        return TheEngine().WithSession([=](Session& session) -> int {
            if (statistics == nullptr)
                return BASS_ERROR_ILLPARAM;
            const velmo::engine::Mixer& mixer = session.GetMixer();
            *statistics = {.underruns = mixer.Underruns(),
                           .clipped = mixer.Clipped(),
                           .rendered = mixer.FramesRendered()};
            return BASS_OK;
        });
    });
}
