#pragma once

#include "bass.h"

#include "core/modINI.h"

namespace velmo {

/// The flags with which files are opened, without `BASS_UNICODE`.
struct OpenFlags
{
    DWORD stream = 0;
    DWORD module = 0;

    bool operator==(const OpenFlags&) const = default;
};

/// Flags by the settings "Sound3D", "Channel" and the speaker mode of section "Sound", read now.
OpenFlags ChannelFlags(modINI& settings);

/// Flags for the device by the settings "Channel", "Bits" and "SpeakerAssign", read now.
DWORD DeviceFlags(modINI& settings);

} // namespace velmo
