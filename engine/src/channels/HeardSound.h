#pragma once

#include "mixer/Voice.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace velmo::engine {

/// The frames of a voice around the one that is being heard, after its effects and before its
/// fades. Lives for the length of a copy: decoding for the voice stands still meanwhile.
///
/// What lies before the voice's first frame is silence. The copies are interleaved frames of
/// `channels`: both sides, or one of them where there is but one channel; further ones are silent.
class HeardSound
{
public:
    /// `heardOut` is the count of frames that the output has played by now. Any thread.
    HeardSound(const Voice& voice, std::uint64_t heardOut) noexcept;

    /// Fills `out` with the frames from the one that is heard on; with the latest ones where fewer
    /// have been mixed yet. Gives how many: fewer than asked only where the voice has come to its
    /// end, or more is asked than is kept.
    std::size_t CopyFromHere(std::span<float> out, std::uint32_t channels) const noexcept;

    /// The sums of both sides of as many frames, from the one that is heard on. At the end it fills
    /// all of `sums` as well, with the last frames.
    void SumAround(std::span<float> sums) const noexcept;

private:
    /// Frames of which the first ones may lie before the voice's first.
    struct Stretch
    {
        std::size_t silent;
        std::uint64_t start; ///< frame of the voice behind the silent ones
        std::size_t frames;  ///< from there on
    };

    Stretch Around(std::size_t frames) const noexcept;
    void CopyAround(std::span<float> out, std::uint32_t channels) const noexcept;

    const bool m_finished;
    const Ring::Peek m_past;
    const std::uint64_t m_heard; ///< frame of the voice
};

} // namespace velmo::engine
