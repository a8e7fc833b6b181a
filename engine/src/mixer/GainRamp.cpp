#include "GainRamp.h"

#include "Fade.h"
#include "MixLoops.h"

#include <algorithm>

namespace velmo::engine {

void GainRamp::SetLength(std::size_t frames) noexcept
{
    m_frames = frames;
    m_done = frames;
}

void GainRamp::Jump(float gain) noexcept
{
    m_gain = gain;
    m_done = m_frames;
}

void GainRamp::Apply(float* out, std::size_t frames, float gain) noexcept
{
    std::size_t done = 0;
    while (done < frames) {
        if (m_done == m_frames && gain != m_gain) {
            m_from = m_gain;
            m_gain = gain;
            m_done = 0;
        }
        if (m_done == m_frames) {
            if (m_gain != 1.0f)
                Scale(out + done * 2, (frames - done) * 2, m_gain);
            return;
        }
        const std::size_t end = std::min(frames, done + m_frames - m_done);
        for (; done < end; ++done) {
            ++m_done;
            const float part = static_cast<float>(m_done) / static_cast<float>(m_frames);
            const float now = m_from + (m_gain - m_from) * RaisedCosine(part);
            out[2 * done] *= now;
            out[2 * done + 1] *= now;
        }
    }
}

} // namespace velmo::engine
