#pragma once

#include "bass/modBass.h"

#include <string>

namespace velmo {

/// Thin questions to a channel, each one call of the library. A handle that is not open gives what
/// the library gives for it.
class ChannelQueries
{
public:
    explicit ChannelQueries(const modBass& bass);

    /// Position in seconds, of the low 32 bits of the byte position.
    float ChannelSeconds(DWORD channel) const;
    /// Length in seconds, of the low 32 bits of the byte length.
    float ChannelLengthSeconds(DWORD channel) const;
    /// Bytes that one second of the channel takes; 0 if it is not open.
    double BytesPerSecond(DWORD channel) const;
    /// 8, 32 (float) or 16.
    std::string ChannelBitsText(DWORD channel) const;
    /// "Mono", "Stereo" or the count followed by " MultiChannel".
    std::string ChannelKindText(DWORD channel) const;
    /// Sample rate in Hz, rounded.
    std::int32_t ChannelFrequency(DWORD channel) const;
    /// Whether the channel plays now (paused and stalled are not playing).
    bool IsPlaying(DWORD channel) const;
    /// Moves to a byte position; the library refuses one beyond the end.
    void SeekBytes(DWORD channel, DWORD position, DWORD mode) const;

private:
    float Seconds(DWORD channel, QWORD bytes) const;

    const modBass& m_bass;
};

} // namespace velmo
