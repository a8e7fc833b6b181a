#pragma once

#include "Voice.h"
#include "Wake.h"

#include "device/DeviceControl.h"

#include <atomic>
#include <cstddef>
#include <cstdint>

namespace velmo::engine {

/// What is done to the sum of all voices.
struct MixFormat
{
    bool mono = false;      ///< both sides play their mean
    bool eightBits = false; ///< rounded to 8 bits
};

/// Sums the voices into the output's blocks, two channels.
///
/// Voices come in over a list that the output's thread takes as a whole at the start of a block;
/// everything else is told by the atomics of `Voice`. So nothing here locks or allocates.
///
/// The list of voices belongs to whoever holds `m_owned`. That is the output's thread but for one
/// case: while the output stands still, the decoding thread takes dropped voices out. Should a
/// block begin just then, it is silence and the voices begin with the next. An output that asks
/// what is ready has the list from an answer above 0 to the end of the next block, and that block
/// has the voices and wishes that were counted: no gap comes of what arrives in between.
// Final, and never deleted as a Renderer.
// NOLINTNEXTLINE(cppcoreguidelines-virtual-class-destructor)
class Mixer final : public Renderer
{
public:
    /// `decoder` is signalled when a voice needs to be filled, or has been let go of.
    Mixer(MixFormat format, Wake& decoder) noexcept;

    void Render(float* out, std::size_t frames) noexcept override;
    std::size_t FramesReady(std::size_t wanted) noexcept override;
    void WaitForFrames() noexcept override;
    void WakeWaiting() noexcept override;

    /// Takes a voice that has sound in its ring; it is pointed to until its stage is `Released`.
    /// Decoding thread.
    void Add(Voice& voice) noexcept;

    /// Lets go of dropped voices for an output that doesn't render now. Decoding thread.
    void ReleaseDropped() noexcept;

    /// Factor of the sum, reached by a ramp over one block; exactly 1 changes no sample. Any
    /// thread.
    void SetGain(float gain) noexcept { m_gain.store(gain, std::memory_order_relaxed); }

    /// Frames rendered so far. Any thread.
    std::uint64_t FramesRendered() const noexcept
    {
        return m_frames.load(std::memory_order_acquire);
    }

private:
    void TakeIncoming() noexcept;
    void ReleaseDone() noexcept;
    bool Done(Voice& voice) noexcept;
    bool MixVoices(float* out, std::size_t frames) noexcept;
    void MixVoice(Voice& voice, float* out, std::size_t frames, bool first) noexcept;
    void ApplyGain(float* out, std::size_t frames) noexcept;

    MixFormat m_format;
    Wake& m_decoder;
    Wake m_framesReady; ///< slept on by the output that renders faster than real time
    std::atomic_flag m_owned;
    bool m_reserved = false; ///< the output's thread holds m_owned for its next block; its own
    std::atomic<Voice*> m_incoming{nullptr};
    std::atomic<float> m_gain{1.0f};
    std::atomic<std::uint64_t> m_frames{0};
    // Of whoever holds m_owned:
    Voice* m_voices = nullptr;
    float m_lastGain = 1.0f;
    bool m_sounding = false; ///< the last block had a voice in it
};

} // namespace velmo::engine
