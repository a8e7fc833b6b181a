// The state is one word, so that "open" and "somebody is inside" change together: an output enters
// by one compare-and-exchange and leaves by one operation, with a wake-up only if it is being
// waited for. Whoever closes takes the open bit away and then waits until nobody is inside.

#include "RenderGate.h"

#include "DeviceClock.h"

#include <algorithm>
#include <thread>

namespace velmo::engine {

namespace {

constexpr std::uint32_t OpenBit = 1;
constexpr std::uint32_t ClosedBit = 2;
constexpr std::uint32_t InsideBit = 4;
constexpr std::uint32_t WaitingBit = 8; ///< beside InsideBit: inside the renderer's WaitForFrames

} // namespace

/// One call through the gate.
class RenderGate::Passage
{
public:
    Passage(std::atomic<std::uint32_t>& state, std::uint32_t bits) noexcept
        : m_state(state)
        , m_bits(bits)
    {
        std::uint32_t expected = OpenBit;
        m_inside = m_state.compare_exchange_strong(expected, OpenBit | bits);
    }
    ~Passage()
    {
        if (m_inside && (m_state.fetch_and(~m_bits) & ClosedBit) != 0)
            m_state.notify_all();
    }
    Passage(const Passage&) = delete;
    Passage& operator=(const Passage&) = delete;

    explicit operator bool() const noexcept { return m_inside; }

private:
    std::atomic<std::uint32_t>& m_state;
    std::uint32_t m_bits;
    bool m_inside = false;
};

RenderGate::RenderGate(Renderer& renderer, DeviceClock& clock) noexcept
    : m_renderer(renderer)
    , m_clock(clock)
{}

void RenderGate::Open() noexcept
{
    std::uint32_t expected = 0;
    m_state.compare_exchange_strong(expected, OpenBit);
}

bool RenderGate::Render(float* out, std::size_t frames, std::size_t channels) noexcept
{
    const Passage passage(m_state, InsideBit);
    if (passage) {
        m_renderer.Render(out, frames);
        m_clock.AddRendered(frames);
        return true;
    }
    std::fill_n(out, frames * channels, 0.0f);
    return false;
}

std::size_t RenderGate::FramesReady(std::size_t wanted) noexcept
{
    const Passage passage(m_state, InsideBit);
    return passage ? m_renderer.FramesReady(wanted) : 0;
}

void RenderGate::WaitForFrames() noexcept
{
    const Passage passage(m_state, InsideBit | WaitingBit);
    if (passage)
        m_renderer.WaitForFrames();
}

void RenderGate::Close() noexcept
{
    m_state.fetch_or(ClosedBit);
    std::uint32_t state = m_state.fetch_and(~OpenBit) & ~OpenBit;
    while ((state & InsideBit) != 0) {
        if ((state & WaitingBit) != 0) {
            // Repeated, for the call may have been on its way into the wait when it was first
            // woken.
            m_renderer.WakeWaiting();
            std::this_thread::yield();
        } else {
            m_state.wait(state);
        }
        state = m_state.load();
    }
}

} // namespace velmo::engine
