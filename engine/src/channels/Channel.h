#pragma once

#include "DecodeThread.h"
#include "Feed.h"
#include "bass.h"

#include "decode/Source.h"
#include "dsp/Spectrum.h"
#include "mixer/Voice.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace velmo::engine {

/// How a channel is opened.
struct ChannelOptions
{
    DWORD flags = 0;              ///< `BASS_SAMPLE_` and the like
    std::uint32_t deviceRate = 0; ///< Hz
    std::uint32_t bufferMs = 0;   ///< decoded ahead
    std::uint32_t speakers = 0;   ///< that the device was opened with; 0: without
};

/// One open file: what it is, and where it stands.
///
/// Belongs to the engine, whose lock is held in every call; nothing here waits. What goes on in the
/// background is in the voice, which exists from the start of playing to its end, a stop, or a
/// seek. `heardOut` is everywhere the count of frames that the output has played by now.
class Channel
{
public:
    Channel(std::string path, std::unique_ptr<Source> source, const ChannelOptions& options);
    ~Channel();
    Channel(const Channel&) = delete;
    Channel& operator=(const Channel&) = delete;

    /// Starts or resumes; from the beginning after the end or if `restart`.
    void Play(DecodeThread& decoder, bool restart);
    /// False if it doesn't play.
    bool Pause(DecodeThread& decoder);
    /// Silent as soon as it has faded, and back at the beginning.
    void Stop(DecodeThread& decoder);
    /// False, and nothing changes, beyond the end.
    bool Seek(DecodeThread& decoder, std::uint64_t bytes);

    /// Takes note of an end that has been heard, and frees effects that have gone. To be called
    /// before anything is asked or done.
    void Settle(std::uint64_t heardOut) noexcept;
    /// It is to be freed: it was heard to its end and was opened so that this frees it.
    bool Expired() const noexcept { return m_ended && FreesItself(); }
    bool FreesItself() const noexcept { return (m_flags & BASS_STREAM_AUTOFREE) != 0; }

    /// One of `BASS_ACTIVE_`.
    DWORD Activity() const noexcept;
    std::uint64_t PositionBytes(std::uint64_t heardOut) const noexcept;
    std::uint64_t LengthBytes() const noexcept;
    double Seconds(std::uint64_t bytes) const noexcept;
    /// Fills `out` with whole frames of what is heard, as `BASS_ChannelGetData` has it, and gives
    /// how many bytes that were. The channel isn't stopped.
    std::size_t HeardSamples(std::uint64_t heardOut, std::span<float> out) const noexcept;
    /// The spectrum of what is heard. The channel isn't stopped.
    void HeardSpectrum(std::uint64_t heardOut,
                       const Spectrum& spectrum,
                       float* magnitudes) const noexcept;
    EffectChain& Effects() const noexcept { return m_strip->effects; }
    /// Samples after the effects beyond -1..1 so far.
    std::uint64_t ClipCount() const noexcept
    {
        return m_strip->clipped.load(std::memory_order_relaxed);
    }
    /// Its `filename` points into `Path`.
    BASS_CHANNELINFO Info() const noexcept;
    /// The plugin that decodes it, null for none. Unmapped only after the channel has gone.
    const std::shared_ptr<const void>& Plugin() const noexcept { return m_feed->Plugin(); }
    /// Belongs to the channel, and to the engine once the channel has freed itself.
    const std::shared_ptr<const std::string>& Path() const noexcept { return m_path; }

private:
    enum class State
    {
        Stopped,
        Playing,
        Paused,
    };

    void StartVoice(DecodeThread& decoder);
    void DropVoice(DecodeThread& decoder) noexcept;
    std::uint64_t FrameHeard(std::uint64_t heardOut) const noexcept;
    const Voice* Audible() const noexcept;
    std::uint64_t FrameBytes() const noexcept;

    const std::shared_ptr<const std::string> m_path;
    const DWORD m_flags;
    const std::uint32_t m_deviceRate;
    const std::uint32_t m_bufferMs;
    const std::shared_ptr<Feed> m_feed;
    const BASS_SOURCE_FORMAT m_format;
    const std::uint32_t m_chans; ///< as told to the outside
    State m_state = State::Stopped;
    bool m_ended = false;      ///< stopped because it was heard to its end
    std::uint64_t m_place = 0; ///< frame of the source where the voice began, or the next one will
    const std::shared_ptr<Strip> m_strip;
    std::shared_ptr<Voice> m_voice;
    std::shared_ptr<Voice>
        m_former; ///< before the last seek; heard until there's sound of the next
};

} // namespace velmo::engine
