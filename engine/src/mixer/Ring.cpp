// Why a peeker and the writer never meet. The writer loads the count of frames read and then the
// count of peekers; a peeker raises the latter and then loads the former; all four are in one order
// that both agree on (seq_cst). So either the writer sees the peeker and gives no place, or the
// peeker sees a count of frames read that is at least the writer's. The place that the writer got
// ends `m_history` frames before its own count, hence before the peeker's as well.

#include "Ring.h"

#include <algorithm>

namespace velmo::engine {

Ring::Peek::Peek(const Ring& ring) noexcept
    : m_ring(ring)
{
    ring.m_peekers.fetch_add(1, std::memory_order_seq_cst);
    // NOLINTNEXTLINE(cppcoreguidelines-prefer-member-initializer): only after the announcement
    m_end = ring.m_read.load(std::memory_order_seq_cst);
}

Ring::Peek::~Peek()
{
    m_ring.m_peekers.fetch_sub(1, std::memory_order_release);
}

std::uint64_t Ring::Peek::Begin() const noexcept
{
    return m_end - std::min<std::uint64_t>(m_end, m_ring.m_history);
}

std::span<const float> Ring::Peek::Piece(std::uint64_t frame, std::size_t maxFrames) const noexcept
{
    const std::size_t memory = m_ring.m_capacity + m_ring.m_history;
    const std::size_t place = frame % memory;
    return {m_ring.m_samples.get() + place * 2, std::min(maxFrames, memory - place) * 2};
}

void Ring::Peek::Copy(std::uint64_t frame, std::span<float> out) const noexcept
{
    while (!out.empty()) {
        const std::span<const float> piece = Piece(frame, out.size() / 2);
        std::copy(piece.begin(), piece.end(), out.begin());
        frame += piece.size() / 2;
        out = out.subspan(piece.size());
    }
}

Ring::Ring(std::size_t capacityFrames, std::size_t historyFrames)
    : m_capacity(capacityFrames)
    , m_history(historyFrames)
    , m_samples(std::make_unique_for_overwrite<float[]>((capacityFrames + historyFrames) * 2))
{}

std::size_t Ring::Fill() const noexcept
{
    // Read first: what was read had been written, so that the difference is never negative.
    const std::uint64_t read = m_read.load(std::memory_order_seq_cst);
    return static_cast<std::size_t>(m_written.load(std::memory_order_acquire) - read);
}

std::span<float> Ring::WriteSpan(std::size_t maxFrames) noexcept
{
    const std::size_t room = m_capacity - Fill();
    if (m_peekers.load(std::memory_order_seq_cst) != 0)
        return {};
    const std::size_t memory = m_capacity + m_history;
    const std::size_t place = m_written.load(std::memory_order_relaxed) % memory;
    const std::size_t frames = std::min({maxFrames, room, memory - place});
    return {m_samples.get() + place * 2, frames * 2};
}

void Ring::Commit(std::size_t frames) noexcept
{
    m_written.store(m_written.load(std::memory_order_relaxed) + frames, std::memory_order_release);
}

std::span<float> Ring::ReadSpan(std::size_t maxFrames) noexcept
{
    const std::size_t memory = m_capacity + m_history;
    const std::size_t place = m_read.load(std::memory_order_relaxed) % memory;
    const std::size_t frames = std::min({maxFrames, Fill(), memory - place});
    return {m_samples.get() + place * 2, frames * 2};
}

void Ring::Release(std::size_t frames) noexcept
{
    m_read.store(m_read.load(std::memory_order_relaxed) + frames, std::memory_order_release);
}

} // namespace velmo::engine
