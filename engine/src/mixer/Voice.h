#pragma once

#include "HeardMap.h"
#include "Ring.h"

#include <atomic>
#include <cstddef>

namespace velmo::engine {

/// What a channel wants of its voice.
enum class Wish
{
    Play,
    Pause,
    Drop, ///< for good; the voice goes silent at the next block
};

/// Where a voice is on its way through the mixer.
enum class VoiceStage
{
    Decoding, ///< the mixer does not know it yet: its first sound is being decoded
    Mixed,    ///< in the mixer's list, which points to it
    Released, ///< the mixer has let go of it and won't touch it again
};

/// One run of a channel from a place in its source on, with the frames decoded ahead.
///
/// A seek or a restart makes a new voice and drops the old one, so that nothing decoded for the old
/// place needs to be taken back. What the threads say to each other is atomic; the one who decodes
/// owns the ring's writing side, the mixer the reading side and `next`.
struct Voice
{
    explicit Voice(std::size_t capacityFrames)
        : ring(capacityFrames)
    {}

    Ring ring;
    std::atomic<Wish> wish{Wish::Play}; ///< set by the channel
    std::atomic<bool> ended{false};     ///< set by the decoder: nothing is written after this
    std::atomic<VoiceStage> stage{
        VoiceStage::Decoding};              ///< `Mixed` set by the decoder, `Released` by the mixer
    std::atomic<Wish> seenWish{Wish::Play}; ///< set by the mixer: what it acts on
    std::atomic<bool> starved{false};       ///< set by the mixer: the last block had a gap
    std::atomic<bool> finished{false};      ///< its last frame has been mixed
    HeardMap heard;                         ///< written by the mixer
    Voice* next = nullptr;                  ///< in the mixer's lists

    /// Its last frame has been heard once the output has played `heardOut` frames.
    bool FinishedAsHeard(std::uint64_t heardOut) const noexcept
    {
        return finished.load(std::memory_order_acquire) && heardOut >= heard.OutEnd();
    }
};

} // namespace velmo::engine
