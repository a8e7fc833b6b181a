#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace velmo::engine {

/// Frames of two floats on their way from one writing thread to one reading thread, without locks.
/// Each side works in the ring's own memory.
class Ring
{
public:
    /// Room for `capacityFrames`, above 0. Its memory isn't touched before it is written.
    explicit Ring(std::size_t capacityFrames);

    std::size_t Capacity() const noexcept { return m_capacity; }

    /// Frames written and not yet read. Exact on either side's own thread, a snapshot elsewhere.
    std::size_t Fill() const noexcept;

    /// A place for up to `maxFrames` frames, 2 samples each; less where the ring is full or its
    /// memory ends. Writer.
    std::span<float> WriteSpan(std::size_t maxFrames) noexcept;
    /// Hands over the first `frames` of the place that `WriteSpan` gave. Writer.
    void Commit(std::size_t frames) noexcept;

    /// Up to `maxFrames` of the oldest frames; fewer where there are no more or the ring's memory
    /// ends. Reader.
    std::span<const float> ReadSpan(std::size_t maxFrames) const noexcept;
    /// Gives back the place of the first `frames` of `ReadSpan`. Reader.
    void Release(std::size_t frames) noexcept;

private:
    // Counts of frames since the beginning, a cache line each: both sides write all the time.
    alignas(64) std::atomic<std::uint64_t> m_written{0};
    alignas(64) std::atomic<std::uint64_t> m_read{0};
    std::size_t m_capacity;
    std::unique_ptr<float[]> m_samples;
};

} // namespace velmo::engine
