/// The reverb that channels with `BASS_SAMPLE_3D` are sent to.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>

namespace velmo::engine {

/// What `Reverb::Set` takes. Numbers outside a range are taken to its nearest end, those that are
/// no number to the value here.
struct ReverbParameters
{
    int room = 0;              ///< 0 to 25, as in `BASS_SetEAXParameters`
    float level = 0;           ///< of the reverberation: 0 to 1, 0 is off
    float decaySeconds = 1.5f; ///< in which low tones fade by 60 dB: 0.1 to 20
    float damping = 0.5f;      ///< how much faster high tones fade: 0 (equally) to 2
};

/// Adds the reverberation of a room to the mix.
///
/// Threads: `Set` is called by one thread at a time, under the engine's lock; `Process` by the
/// thread that mixes, which waits for nothing. The others by any thread.
class Reverb
{
public:
    /// `sampleRate` in Hz, of both sides of `Process`. Takes no memory worth mentioning yet.
    explicit Reverb(std::uint32_t sampleRate) noexcept;
    ~Reverb();
    Reverb(const Reverb&) = delete;
    Reverb& operator=(const Reverb&) = delete;

    /// Changes the reverb from the next block on, without a click. Level 0 fades it out in 20 ms.
    /// The first level above 0 allocates, and throws `std::bad_alloc` without memory (nothing has
    /// changed then).
    void Set(const ReverbParameters& parameters);

    /// Whether `Process` has anything to do: the level is above 0 or is being faded to it. While it
    /// hasn't, the mixer need not make a send, and the output stays as it is to the bit.
    bool Active() const noexcept
    {
        return m_level.load(std::memory_order_acquire) > 0
               || m_running.load(std::memory_order_acquire);
    }

    /// Whether sound of former sends would still be heard: something in the network may come out
    /// above -90 dB of full scale. It becomes false at most `MaxTailSeconds` after the last sound
    /// was sent, and with `Active`.
    bool Sounding() const noexcept { return m_sounding.load(std::memory_order_acquire); }

    static constexpr std::size_t MaxTailSeconds = 42;

    /// Adds the reverberation of `send` to `out`, both `frames` interleaved stereo frames and not
    /// overlapping; `send` null is silence. Mixing thread only. Samples of `send` that are no
    /// number count as 0. Where `Active` is false it changes nothing.
    void Process(const float* send, float* out, std::size_t frames) noexcept;

private:
    class Mixing;

    std::uint32_t m_sampleRate;
    std::atomic<float> m_level{0};       ///< as set
    std::atomic<bool> m_running{false};  ///< written by the mixing thread: not faded out yet
    std::atomic<bool> m_sounding{false}; ///< written by the mixing thread
    /// Made by the first level above 0, and then of the mixing thread but for its mailbox.
    std::unique_ptr<Mixing> m_mixing;
};

} // namespace velmo::engine
