#pragma once

#include "DecodeThread.h"

#include "device/DeviceControl.h"
#include "mixer/Mixer.h"
#include "mixer/Wake.h"

#include <cstdint>
#include <functional>
#include <memory>

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
    std::uint64_t HeardFrames() const noexcept { return m_device.HeardFrames(); }
    std::uint32_t SampleRate() const noexcept { return m_sampleRate; }
    /// What a channel decodes ahead at the least, in ms: two blocks of any output. One without a
    /// clock takes sound in bursts; over a short buffer the threads would wait for each other all
    /// the time.
    std::uint32_t LeastBufferMs() const noexcept
    {
        return m_device.IsFasterThanRealTime() ? 2000 : 400;
    }

private:
    explicit Session(MixFormat format);

    Wake m_decoderWake;
    Mixer m_mixer;
    DeviceControl m_device;
    std::uint32_t m_sampleRate = 0;
    std::unique_ptr<DecodeThread> m_decoder;
};

} // namespace velmo::engine
