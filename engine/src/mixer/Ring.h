#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace velmo::engine {

/// Frames of two floats on their way from one writing thread to one reading thread, without locks.
/// Each side works in the ring's own memory; the reader may change the frames in place.
///
/// What was read stays for a while: the last `historyFrames` frames can be looked at by further
/// threads, for which see `Peek`. The writer keeps off them: it announces nothing, but asks whether
/// somebody looks, and gets no place as long as that is so. Neither the reader nor the one who
/// looks ever waits.
class Ring
{
public:
    /// A look at the past. Any thread, several at once, for as short as can be: the writer stands
    /// still meanwhile.
    class Peek
    {
    public:
        explicit Peek(const Ring& ring) noexcept;
        ~Peek();
        Peek(const Peek&) = delete;
        Peek& operator=(const Peek&) = delete;

        /// The oldest frame that is still there, counted from the first one ever written.
        std::uint64_t Begin() const noexcept;
        /// The frame behind the newest one that has been read.
        std::uint64_t End() const noexcept { return m_end; }
        /// Up to `maxFrames` frames from `frame` on, which lie between `Begin` and `End`; fewer
        /// where the ring's memory ends. Theirs for the peek's life.
        std::span<const float> Piece(std::uint64_t frame, std::size_t maxFrames) const noexcept;
        /// Fills `out` with the frames from `frame` on, which lie between `Begin` and `End`.
        void Copy(std::uint64_t frame, std::span<float> out) const noexcept;

    private:
        const Ring& m_ring;
        std::uint64_t m_end;
    };

    /// Room for `capacityFrames`, above 0, beside the history. Its memory isn't touched before it
    /// is written.
    explicit Ring(std::size_t capacityFrames, std::size_t historyFrames = 0);

    std::size_t Capacity() const noexcept { return m_capacity; }

    /// Frames written and not yet read. Exact on either side's own thread, a snapshot elsewhere.
    std::size_t Fill() const noexcept;

    /// A place for up to `maxFrames` frames, 2 samples each; less where the ring is full or its
    /// memory ends, none while somebody peeks. Writer.
    std::span<float> WriteSpan(std::size_t maxFrames) noexcept;
    /// Hands over the first `frames` of the place that `WriteSpan` gave. Writer.
    void Commit(std::size_t frames) noexcept;

    /// Up to `maxFrames` of the oldest frames; fewer where there are no more or the ring's memory
    /// ends. Reader.
    std::span<float> ReadSpan(std::size_t maxFrames) noexcept;
    /// Makes the first `frames` of `ReadSpan` history. Reader.
    void Release(std::size_t frames) noexcept;

private:
    // Counts of frames since the beginning, a cache line each: both sides write all the time.
    alignas(64) std::atomic<std::uint64_t> m_written{0};
    alignas(64) std::atomic<std::uint64_t> m_read{0};
    alignas(64) mutable std::atomic<int> m_peekers{0};
    std::size_t m_capacity;
    std::size_t m_history;
    std::unique_ptr<float[]> m_samples;
};

} // namespace velmo::engine
