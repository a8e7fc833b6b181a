#pragma once

#include "EffectChain.h"
#include "Fade.h"
#include "HeardMap.h"
#include "Ring.h"
#include "SpeakerRoute.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

namespace velmo::engine {

/// What a channel wants of its voice.
enum class Wish
{
    Play,
    Pause,
    Drop, ///< for good
};

/// Where a voice is on its way through the mixer.
enum class VoiceStage
{
    Decoding, ///< the mixer does not know it yet: its first sound is being decoded
    Mixed,    ///< in the mixer's list, which points to it
    Released, ///< the mixer has let go of it and won't touch it again
};

/// What all voices of a channel go through. Belongs to the channel and to its voices, of which the
/// last may still fade when the channel is gone.
struct Strip
{
    explicit Strip(std::uint32_t sampleRate,
                   bool toReverb = false,
                   SpeakerRoute speakers = {}) noexcept
        : effects(sampleRate)
        , reverberates(toReverb)
        , route(speakers)
    {}

    EffectChain effects;
    const bool reverberates; ///< it's sent to the reverb
    const SpeakerRoute route;
    std::atomic<std::uint64_t> clipped{0}; ///< samples beyond -1..1 so far; written by the mixer
};

struct VoiceSettings
{
    std::size_t capacityFrames = 0; ///< decoded ahead at most, above 0
    std::size_t historyFrames = 0;  ///< kept after they were mixed
    std::size_t fadeFrames = 0;     ///< of a pause, an end before the sound's own, and the like
    Fade::Start start = Fade::Start::Full;
};

/// One run of a channel from a place in its source on, with the frames decoded ahead.
///
/// A seek or a restart makes a new voice and drops the old one, so that nothing decoded for the old
/// place needs to be taken back. What the threads say to each other is atomic; the one who decodes
/// owns the ring's writing side, the mixer the reading side and what is marked as its own.
///
/// A voice that isn't to play any more fades out before the mixer acts on the wish, and fades in
/// when it goes on. The frames of both count as heard like all others.
struct Voice
{
    Voice(const VoiceSettings& settings, std::shared_ptr<Strip> through)
        : ring(settings.capacityFrames, settings.historyFrames)
        , strip(std::move(through))
        , fade(settings.fadeFrames, settings.start)
    {}

    Ring ring;
    const std::shared_ptr<Strip> strip; ///< never null
    std::atomic<Wish> wish{Wish::Play}; ///< set by the channel
    std::atomic<bool> ended{false};     ///< set by the decoder: nothing is written after this
    std::atomic<bool> loud{false};      ///< set by the decoder: there may be samples beyond -1..1
    std::atomic<VoiceStage> stage{
        VoiceStage::Decoding};              ///< `Mixed` set by the decoder, `Released` by the mixer
    std::atomic<Wish> seenWish{Wish::Play}; ///< set by the mixer: what it has done
    std::atomic<bool> starved{false};       ///< set by the mixer: the last block had a gap
    std::atomic<bool> finished{false};      ///< its last frame has been mixed
    HeardMap heard;                         ///< written by the mixer

    // The mixer's own:
    Wish now = Wish::Play; ///< wish that this block is mixed by
    Fade fade;
    bool begun = false; ///< a frame of it has been mixed
    Voice* next = nullptr;

    /// Its last frame has been heard once the output has played `heardOut` frames.
    bool FinishedAsHeard(std::uint64_t heardOut) const noexcept
    {
        return finished.load(std::memory_order_acquire) && heardOut >= heard.OutEnd();
    }
};

} // namespace velmo::engine
