#include "ChannelFlags.h"

#include "core/NumberText.h"
#include "core/SettingsKeys.h"
#include "core/TextRules.h"

namespace velmo {

namespace {

bool Is(modINI& settings, const char* key, const char* fallback, const char* wanted)
{
    return EqualsIgnoringCase(settings.ReadSetting(sections::Sound, key, fallback), wanted);
}

/// The speaker's bits, as a number in the settings; 0 if there is none.
DWORD SpeakerMode(modINI& settings)
{
    const bool stereo = Is(settings, keys::Channel, "Stereo", "stereo");
    const std::string text =
        settings.ReadSetting(sections::Sound, stereo ? keys::SA_StereoMode : keys::SA_MonoMode, "");
    return static_cast<DWORD>(RoundHalfEven(ParseNumber(text)));
}

} // namespace

OpenFlags ChannelFlags(modINI& settings)
{
    if (Is(settings, keys::Sound3D, "true", "true")) {
        constexpr DWORD Stream = BASS_STREAM_AUTOFREE | BASS_SAMPLE_3D | BASS_SAMPLE_MONO;
        return {.stream = Stream, .module = Stream | BASS_MUSIC_RAMP | BASS_MUSIC_SURROUND};
    }
    const DWORD flags = SpeakerMode(settings) + BASS_STREAM_AUTOFREE;
    return {.stream = flags, .module = flags};
}

DWORD DeviceFlags(modINI& settings)
{
    DWORD flags = BASS_DEVICE_3D | BASS_DEVICE_LATENCY;
    if (Is(settings, keys::Channel, "stereo", "mono"))
        flags |= BASS_DEVICE_MONO;
    if (settings.ReadSetting(sections::Sound, keys::Bits, "16") == "8")
        flags |= BASS_DEVICE_8BITS;
    if (Is(settings, keys::SpeakerAssign, "false", "true"))
        flags |= BASS_DEVICE_SPEAKERS;
    return flags;
}

} // namespace velmo
