/// Decoded frames on their way to a reader, each at its place in the sound.
///
/// Some libraries give sound in blocks, each with the number of its first frame. Where blocks are
/// missing because a file is damaged, silence stands for them, so that all behind it stays in time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace velmo::engine {

/// Holds what one block brings. One thread at a time.
class FrameQueue
{
public:
    /// Empties it: the next frame is number 0 of `lengthFrames`, interleaved of `channels`.
    void Start(std::uint32_t channels, std::uint64_t lengthFrames) noexcept;

    /// Empties it: the next frame is `frame`. Blocks before it will be passed over.
    void SeekTo(std::uint64_t frame) noexcept;

    bool Empty() const noexcept { return m_silentFrames == 0 && m_taken == m_samples.size(); }

    /// Number of the first frame behind what it holds.
    std::uint64_t End() const noexcept;

    /// Takes a block of `frames` frames, of which the first is number `position`. Gives the place
    /// for all its samples, which the caller then fills; empty if it's not wanted or there is no
    /// memory. A number that can't be, as behind a large gap or in the past, is not believed: the
    /// block then follows what came before. The queue must be empty.
    std::span<float> Add(std::uint64_t position, std::size_t frames) noexcept;

    /// Whether the first block behind a seek began behind the frame that was asked for.
    bool BeganLate() const noexcept { return m_beganLate; }

    /// Fills it with silence up to the sound's length, if that is at most `mostFrames` away. The
    /// queue must be empty.
    void FillUp(std::uint64_t mostFrames) noexcept;

    /// Moves up to `frames` frames to `out`, none behind the sound's length; gives how many.
    std::size_t Take(float* out, std::size_t frames) noexcept;

private:
    std::vector<float> m_samples;
    std::size_t m_taken = 0;          ///< samples of it that are gone
    std::uint64_t m_silentFrames = 0; ///< before the samples
    std::uint64_t m_position = 0;     ///< number of the next frame to be taken
    std::uint64_t m_lengthFrames = 0;
    std::size_t m_channels = 1;
    bool m_beganLate = false;
    bool m_sought = false; ///< no block has reached `m_position` since the seek
};

} // namespace velmo::engine
