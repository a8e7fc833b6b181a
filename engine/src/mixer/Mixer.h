#pragma once

#include "GainRamp.h"
#include "Voice.h"
#include "Wake.h"

#include "device/DeviceControl.h"
#include "dsp/Reverb.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace velmo::engine {

/// What is done to the sum of all voices.
struct MixFormat
{
    bool mono = false;      ///< both sides play their mean
    bool eightBits = false; ///< rounded to 8 bits
};

/// Sums the voices into the output's blocks: two channels, or as many as the device has speakers.
/// Then each pair of speakers is a sum of its own, and a voice goes to one of them.
///
/// A voice goes through its channel's effects in the memory of its ring, so that what is kept there
/// is what was heard; then it's added to the sum with its fade, and to the reverb's send. The
/// reverb, the gain and the device's own changes come after the sum.
///
/// Voices come in over a list that the output's thread takes as a whole at the start of a block;
/// everything else is told by the atomics of `Voice`. So nothing here locks or allocates. A wish is
/// acted on with the next block: a voice that is not to play any more fades out, and where it has
/// done so, `seenWish` says it.
///
/// The list of voices belongs to whoever holds `m_owned`. That is the output's thread but for one
/// case: while the output stands still, the decoding thread ends the fades that nobody hears.
/// Should a block begin just then, it is silence and the voices begin with the next. An output that
/// asks what is ready has the list from an answer above 0 to the end of the next block, and that
/// block has the voices and wishes that were counted: no gap comes of what arrives in between.
// Final, and never deleted as a Renderer.
// NOLINTNEXTLINE(cppcoreguidelines-virtual-class-destructor)
class Mixer final : public Renderer
{
public:
    /// `decoder` is signalled when a voice needs to be filled, or has been let go of.
    Mixer(MixFormat format, Wake& decoder);

    /// Names the rate in Hz and the reverb, which may be null. Before the output runs.
    void Prepare(std::uint32_t sampleRate, Reverb* reverb) noexcept;

    /// Makes frames of `channels` samples, 2, 6 or 8, for voices with routes. Before the output
    /// runs; throws std::bad_alloc.
    void PrepareSpeakers(std::uint32_t channels);

    void Render(float* out, std::size_t frames) noexcept override;
    std::size_t FramesReady(std::size_t wanted) noexcept override;
    void WaitForFrames() noexcept override;
    void WakeWaiting() noexcept override;

    /// Takes a voice that has sound in its ring; it is pointed to until its stage is `Released`.
    /// Decoding thread.
    void Add(Voice& voice) noexcept;

    /// Acts on the wishes for an output that doesn't render now: what isn't to play any more goes
    /// silent without a fade. Decoding thread.
    void SettleUnheard() noexcept;

    /// Factor of the sum, reached by a ramp of 20 ms; exactly 1 changes no sample. Any thread.
    void SetGain(float gain) noexcept { m_gain.store(gain, std::memory_order_relaxed); }

    /// Frames rendered so far. Any thread.
    std::uint64_t FramesRendered() const noexcept
    {
        return m_frames.load(std::memory_order_acquire);
    }

    /// Whether the reverb still sounds of what it was sent. Any thread.
    bool Reverberating() const noexcept { return m_reverb != nullptr && m_reverb->Sounding(); }

    /// Blocks in which a voice lacked frames. Any thread.
    std::uint64_t Underruns() const noexcept { return m_underruns.load(std::memory_order_relaxed); }
    /// Samples of the output beyond -1..1. Any thread.
    std::uint64_t Clipped() const noexcept { return m_clipped.load(std::memory_order_relaxed); }

private:
    struct Piece;

    void TakeIncoming() noexcept;
    void Settle() noexcept;
    static bool Done(Voice& voice) noexcept;
    void MixBlock(float* out, std::size_t frames) noexcept;
    bool MixPiece(Piece& piece) noexcept;
    float* PairOf(const Piece& piece, std::size_t pair) const noexcept;
    void MixVoice(Voice& voice, Piece& piece) noexcept;
    void AddSolo(Piece& piece, SpeakerRoute route) noexcept;
    void RunStrip(Voice& voice, std::span<float> samples) noexcept;
    bool FollowsTail(const Voice& voice) const noexcept;
    void Finish(const Piece& piece) noexcept;

    MixFormat m_format;
    Wake& m_decoder;
    Wake m_framesReady; ///< slept on by the output that renders faster than real time
    std::atomic_flag m_owned;
    bool m_reserved = false; ///< the output's thread holds m_owned for its next block; its own
    std::atomic<Voice*> m_incoming{nullptr};
    std::atomic<float> m_gain{1.0f};
    std::atomic<std::uint64_t> m_frames{0};
    std::atomic<std::uint64_t> m_underruns{0};
    std::atomic<std::uint64_t> m_clipped{0};
    Reverb* m_reverb = nullptr;
    std::size_t m_pairs = 1;         ///< of speakers, in a frame
    std::unique_ptr<float[]> m_sums; ///< a piece for each pair, if there's more than one
    std::unique_ptr<float[]> m_solo; ///< a piece of a voice for one speaker
    // Of whoever holds m_owned:
    Voice* m_voices = nullptr;
    GainRamp m_ramp;
    std::unique_ptr<float[]> m_send; ///< what the reverb gets of a piece
    bool m_sounding = false;         ///< the last piece had sound in it
    bool m_gap = false;              ///< of this block: a voice lacked frames
    bool m_loud = false;             ///< of this piece: the sum may be beyond -1..1
};

} // namespace velmo::engine
