#include "ChannelQueries.h"

#include "core/NumberText.h"

namespace velmo {

ChannelQueries::ChannelQueries(const modBass& bass)
    : m_bass(bass)
{}

float ChannelQueries::ChannelSeconds(DWORD channel) const
{
    return Seconds(channel, m_bass.BASS_ChannelGetPosition(channel, 0));
}

float ChannelQueries::ChannelLengthSeconds(DWORD channel) const
{
    return Seconds(channel, m_bass.BASS_ChannelGetLength(channel, 0));
}

double ChannelQueries::BytesPerSecond(DWORD channel) const
{
    BASS_CHANNELINFO info = {};
    m_bass.BASS_ChannelGetInfo(channel, &info);
    const double bytesPerSample = (info.flags & BASS_SAMPLE_8BITS) != 0 ? 1 : 2;
    return static_cast<double>(info.freq) * info.chans * bytesPerSample;
}

std::string ChannelQueries::ChannelBitsText(DWORD channel) const
{
    BASS_CHANNELINFO info = {};
    m_bass.BASS_ChannelGetInfo(channel, &info);
    if ((info.flags & BASS_SAMPLE_8BITS) != 0)
        return "8";
    return (info.flags & BASS_SAMPLE_FLOAT) != 0 ? "32" : "16";
}

std::string ChannelQueries::ChannelKindText(DWORD channel) const
{
    BASS_CHANNELINFO info = {};
    m_bass.BASS_ChannelGetInfo(channel, &info);
    if (info.chans == 1)
        return "Mono";
    return info.chans == 2 ? "Stereo" : std::to_string(info.chans) + " MultiChannel";
}

std::int32_t ChannelQueries::ChannelFrequency(DWORD channel) const
{
    float frequency = 0;
    m_bass.BASS_ChannelGetAttribute(channel, BASS_ATTRIB_FREQ, &frequency);
    return RoundHalfEven(static_cast<double>(frequency));
}

bool ChannelQueries::IsPlaying(DWORD channel) const
{
    return m_bass.BASS_ChannelIsActive(channel) == BASS_ACTIVE_PLAYING;
}

void ChannelQueries::SeekBytes(DWORD channel, DWORD position, DWORD mode) const
{
    m_bass.BASS_ChannelSetPosition(channel, position, mode);
}

float ChannelQueries::Seconds(DWORD channel, QWORD bytes) const
{
    // Positions are used by their low 32 bits only: at 44.1 kHz stereo they wrap after 6 h 45 min
    // 47 s.
    return static_cast<float>(m_bass.BASS_ChannelBytes2Seconds(channel, static_cast<DWORD>(bytes)));
}

} // namespace velmo
