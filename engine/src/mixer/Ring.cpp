#include "Ring.h"

#include <algorithm>

namespace velmo::engine {

Ring::Ring(std::size_t capacityFrames)
    : m_capacity(capacityFrames)
    , m_samples(std::make_unique_for_overwrite<float[]>(capacityFrames * 2))
{}

std::size_t Ring::Fill() const noexcept
{
    // Read first: what was read had been written, so that the difference is never negative.
    const std::uint64_t read = m_read.load(std::memory_order_acquire);
    return static_cast<std::size_t>(m_written.load(std::memory_order_acquire) - read);
}

std::span<float> Ring::WriteSpan(std::size_t maxFrames) noexcept
{
    const std::size_t place = m_written.load(std::memory_order_relaxed) % m_capacity;
    const std::size_t frames = std::min({maxFrames, m_capacity - Fill(), m_capacity - place});
    return {m_samples.get() + place * 2, frames * 2};
}

void Ring::Commit(std::size_t frames) noexcept
{
    m_written.store(m_written.load(std::memory_order_relaxed) + frames, std::memory_order_release);
}

std::span<const float> Ring::ReadSpan(std::size_t maxFrames) const noexcept
{
    const std::size_t place = m_read.load(std::memory_order_relaxed) % m_capacity;
    const std::size_t frames = std::min({maxFrames, Fill(), m_capacity - place});
    return {m_samples.get() + place * 2, frames * 2};
}

void Ring::Release(std::size_t frames) noexcept
{
    m_read.store(m_read.load(std::memory_order_relaxed) + frames, std::memory_order_release);
}

} // namespace velmo::engine
