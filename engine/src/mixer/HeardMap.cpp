#include "HeardMap.h"

#include <algorithm>

namespace velmo::engine {

void HeardMap::Append(std::uint64_t outFrame, std::size_t frames) noexcept
{
    const std::uint64_t count = m_count.load(std::memory_order_relaxed);
    const std::uint64_t voiceEnd = m_voiceEnd.load(std::memory_order_relaxed);
    const std::uint32_t version = m_version.load(std::memory_order_relaxed);
    m_version.store(version + 1, std::memory_order_release);
    if (count == 0 || m_outEnd.load(std::memory_order_relaxed) != outFrame) {
        Stretch& stretch = m_stretches[count % Kept];
        stretch.outStart.store(outFrame, std::memory_order_release);
        stretch.voiceStart.store(voiceEnd, std::memory_order_release);
        m_count.store(count + 1, std::memory_order_release);
    }
    m_outEnd.store(outFrame + frames, std::memory_order_release);
    m_voiceEnd.store(voiceEnd + frames, std::memory_order_release);
    m_version.store(version + 2, std::memory_order_release);
}

std::uint64_t HeardMap::FramesHeard(std::uint64_t heardOut) const noexcept
{
    for (;;) {
        const std::uint32_t before = m_version.load(std::memory_order_acquire);
        const std::uint64_t frames = Lookup(heardOut);
        if (before % 2 == 0 && m_version.load(std::memory_order_acquire) == before)
            return frames;
    }
}

/// The newest stretch that has begun by `heardOut` counts, up to where the next one goes on.
std::uint64_t HeardMap::Lookup(std::uint64_t heardOut) const noexcept
{
    const std::uint64_t count = m_count.load(std::memory_order_acquire);
    std::uint64_t end = m_voiceEnd.load(std::memory_order_acquire);
    for (std::uint64_t back = 1; back <= std::min<std::uint64_t>(count, Kept); ++back) {
        const Stretch& stretch = m_stretches[(count - back) % Kept];
        const std::uint64_t outStart = stretch.outStart.load(std::memory_order_acquire);
        const std::uint64_t voiceStart = stretch.voiceStart.load(std::memory_order_acquire);
        if (outStart <= heardOut)
            return std::min(voiceStart + (heardOut - outStart), end);
        end = voiceStart;
    }
    return end;
}

} // namespace velmo::engine
