#pragma once

#include "DecodeThread.h"

#include "device/DeviceControl.h"
#include "dsp/Reverb.h"
#include "dsp/Spectrum.h"
#include "mixer/Mixer.h"
#include "mixer/Wake.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

namespace velmo::engine {

/// Everything that runs between `BASS_Init` and `BASS_Free`: mixer, output, decoding thread. They
/// refer to each other in the order in which they stand here, and go in the reverse.
class Session
{
public:
    /// Opens the output and waits for it; null if it can't be opened.
    static std::unique_ptr<Session> Open(const DeviceSettings& settings,
                                         MixFormat format,
                                         std::function<void()> onHeardOut);
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    Mixer& GetMixer() noexcept { return m_mixer; }
    DecodeThread& Decoder() noexcept { return *m_decoder; }
    const DeviceControl& Device() const noexcept { return m_device; }
    std::uint64_t HeardFrames() const noexcept { return m_device.HeardFrames(); }
    std::uint32_t SampleRate() const noexcept { return m_sampleRate; }
    /// That the device was opened with; 0: without.
    std::uint32_t Speakers() const noexcept { return m_speakers; }
    /// Time from the mixer to the ear, in ms.
    std::uint32_t LatencyMs() const noexcept
    {
        return static_cast<std::uint32_t>(m_device.LatencyFrames() * 1000 / m_sampleRate);
    }
    const Spectrum& GetSpectrum() const noexcept { return m_spectrum; }
    /// As `BASS_SetEAXParameters`, but for the check of the room. Under the engine's lock; throws
    /// std::bad_alloc.
    void SetReverb(int room, float level, float decaySeconds, float damping);
    /// What a channel decodes ahead at the least, in ms: two blocks of any output. One without a
    /// clock takes sound in bursts; over a short buffer the threads would wait for each other all
    /// the time.
    std::uint32_t LeastBufferMs() const noexcept
    {
        return m_device.IsFasterThanRealTime() ? 2000 : 400;
    }

private:
    explicit Session(MixFormat format);

    const Spectrum m_spectrum;
    ReverbParameters m_reverbParameters;
    Wake m_decoderWake;
    std::optional<Reverb> m_reverb; ///< as soon as the rate is known
    Mixer m_mixer;
    DeviceControl m_device;
    std::uint32_t m_sampleRate = 0;
    std::uint32_t m_speakers = 0;
    std::unique_ptr<DecodeThread> m_decoder;
};

} // namespace velmo::engine
