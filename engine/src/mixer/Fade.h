#pragma once

#include <cmath>
#include <cstddef>
#include <numbers>

namespace velmo::engine {

/// Gain at the part `x`, 0 to 1, of a way from 0 to 1 along half a period of a raised cosine: the
/// curve sets out and arrives level, so that it makes no corner, which would click.
inline float RaisedCosine(float x) noexcept
{
    return 0.5f - 0.5f * std::cos(std::numbers::pi_v<float> * x);
}

/// A loudness that goes up to full and down to silence along a raised cosine, a step a frame, and
/// may turn around anywhere. One that takes 0 frames is silent and full at the same time.
class Fade
{
public:
    enum class Way
    {
        Up,
        Down,
    };
    enum class Start
    {
        Silent,
        Full,
    };

    /// `frames` from one end to the other.
    Fade(std::size_t frames, Start start) noexcept
        : m_frames(frames)
        , m_level(start == Start::Full ? frames : 0)
    {}

    /// Frames until the end of the way.
    std::size_t Left(Way way) const noexcept
    {
        return way == Way::Up ? m_frames - m_level : m_level;
    }

    /// Goes to the end of the way at once.
    void Finish(Way way) noexcept { m_level = way == Way::Up ? m_frames : 0; }

    /// The gain of the next frame; `Left` is above 0.
    float Step(Way way) noexcept
    {
        const std::size_t below = way == Way::Up ? m_level : m_level - 1;
        m_level = way == Way::Up ? m_level + 1 : below;
        return RaisedCosine((static_cast<float>(below) + 0.5f) / static_cast<float>(m_frames));
    }

private:
    std::size_t m_frames;
    std::size_t m_level;
};

} // namespace velmo::engine
