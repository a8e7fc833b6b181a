#pragma once

#include "DeviceControl.h"

#include <atomic>
#include <cstddef>
#include <cstdint>

namespace velmo::engine {

class DeviceClock;

/// The one way from an output to the renderer. Made shut; opened once; closed for good.
///
/// Once closed, neither renderer nor clock is touched any more, so both may go while a stream that
/// hangs in the system still holds the gate.
class RenderGate
{
public:
    RenderGate(Renderer& renderer, DeviceClock& clock) noexcept;

    /// Lets calls through. Does nothing after `Close`.
    void Open() noexcept;

    /// Renders and counts, or gives silence while the gate isn't open. `channels` a frame of `out`.
    /// The output's thread: never waits. False if it was silence.
    bool Render(float* out, std::size_t frames, std::size_t channels) noexcept;

    /// As the renderer's function; 0 while the gate isn't open. The output's thread.
    std::size_t FramesReady(std::size_t wanted) noexcept;

    /// As the renderer's function; returns at once while the gate isn't open. The output's thread.
    void WaitForFrames() noexcept;

    /// Lets nothing through any more, ends a `WaitForFrames`, and returns when no call is under
    /// way. Any thread but the output's own.
    void Close() noexcept;

private:
    class Passage;

    Renderer& m_renderer;
    DeviceClock& m_clock;
    std::atomic<std::uint32_t> m_state{0};
};

} // namespace velmo::engine
