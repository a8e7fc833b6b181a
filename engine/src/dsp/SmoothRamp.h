/// Changes that are not heard as clicks.
#pragma once

#include <cstddef>

namespace velmo::engine {

/// From 0 at 0 to 1 at 1, with first and second derivatives 0 at both: a factor that follows it
/// puts neither a step nor a bend into a sound.
inline float SmoothStep(float t) noexcept
{
    return t * t * t * (t * (t * 6.0f - 15.0f) + 10.0f);
}

/// A value on its way to another along `SmoothStep`. One thread.
class SmoothRamp
{
public:
    explicit SmoothRamp(float value = 0) noexcept
        : m_from(value)
        , m_to(value)
    {}

    /// Begins a way of `frames` frames. Not while one is under way: that would be a bend.
    void Start(float to, std::size_t frames) noexcept
    {
        m_from = m_to;
        m_to = to;
        m_frames = frames;
        m_done = 0;
    }

    bool IsMoving() const noexcept { return m_done < m_frames; }
    float Goal() const noexcept { return m_to; }

    /// The value of the next frame; exactly the goal at the end and from then on.
    float Next() noexcept
    {
        if (!IsMoving())
            return m_to;
        ++m_done;
        if (m_done == m_frames)
            return m_to;
        const float way = static_cast<float>(m_done) / static_cast<float>(m_frames);
        return m_from + (m_to - m_from) * SmoothStep(way);
    }

private:
    float m_from;
    float m_to;
    std::size_t m_frames = 0;
    std::size_t m_done = 0;
};

} // namespace velmo::engine
