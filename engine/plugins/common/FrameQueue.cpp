#include "FrameQueue.h"

#include <algorithm>
#include <new>

namespace velmo::engine {

namespace {

/// The largest hole that is filled with silence: some 20 seconds.
constexpr std::uint64_t MostMissing = std::uint64_t{1} << 20U;

} // namespace

void FrameQueue::Start(std::uint32_t channels, std::uint64_t lengthFrames) noexcept
{
    m_channels = channels;
    m_lengthFrames = lengthFrames;
    SeekTo(0);
    m_sought = false;
}

void FrameQueue::SeekTo(std::uint64_t frame) noexcept
{
    m_samples.clear();
    m_taken = 0;
    m_silentFrames = 0;
    m_position = frame;
    m_beganLate = false;
    m_sought = true;
}

std::uint64_t FrameQueue::End() const noexcept
{
    return m_position + m_silentFrames + (m_samples.size() - m_taken) / m_channels;
}

std::span<float> FrameQueue::Add(std::uint64_t position, std::size_t frames) noexcept
{
    if (m_sought && position + frames <= m_position)
        return {};
    std::uint64_t early = 0;
    if (position > m_position && position - m_position <= MostMissing)
        m_silentFrames = position - m_position;
    else if (m_sought && position < m_position)
        early = m_position - position;
    m_beganLate = m_beganLate || (m_sought && position > m_position);
    m_sought = false;
    try {
        m_samples.resize(frames * m_channels);
    } catch (const std::bad_alloc&) {
        m_samples.clear();
        return {};
    }
    m_taken = static_cast<std::size_t>(early) * m_channels;
    return m_samples;
}

void FrameQueue::FillUp(std::uint64_t mostFrames) noexcept
{
    const std::uint64_t missing = m_lengthFrames - std::min(m_position, m_lengthFrames);
    if (missing <= mostFrames)
        m_silentFrames = missing;
}

std::size_t FrameQueue::Take(float* out, std::size_t frames) noexcept
{
    const std::uint64_t left = m_lengthFrames - std::min(m_position, m_lengthFrames);
    const std::size_t wanted = std::min<std::uint64_t>(frames, left);
    const std::size_t silent = std::min<std::uint64_t>(wanted, m_silentFrames);
    std::fill_n(out, silent * m_channels, 0.0f);
    const std::size_t held = (m_samples.size() - m_taken) / m_channels;
    const std::size_t copied = std::min(wanted - silent, held);
    std::copy_n(m_samples.data() + m_taken, copied * m_channels, out + silent * m_channels);
    m_silentFrames -= silent;
    m_taken += copied * m_channels;
    m_position += silent + copied;
    return silent + copied;
}

} // namespace velmo::engine
