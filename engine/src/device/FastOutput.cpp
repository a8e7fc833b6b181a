// The thread sleeps in one of two places: on its own switch while it's stopped, and in the
// renderer's WaitForFrames while it runs and nothing is ready. A stop that finds it in the second
// wakes it; one that comes just before the wait is harmless, since nothing is rendered there.

#include "FastOutput.h"

#include "DeviceClock.h"
#include "OutputThread.h"

#include <algorithm>
#include <utility>

namespace velmo::engine {

namespace {

constexpr std::size_t BlockFrames = 4096;

} // namespace

FastOutput::FastOutput(const OutputContext& context, std::unique_ptr<BlockSink> sink)
    : m_renderer(context.renderer)
    , m_channels(context.settings.channels)
    , m_sink(std::move(sink))
    , m_gate(context.renderer, context.clock)
    , m_block(BlockFrames * m_channels)
{
    context.clock.FollowRendered();
    m_gate.Open();
    m_thread = StartEngineThread("velmo-file", [this] { Loop(); });
}

FastOutput::~FastOutput()
{
    m_switch.Quit();
    m_gate.Close();
    m_sink->Abandon();
    m_thread.join();
}

void FastOutput::SetRunning(bool running) noexcept
{
    m_switch.SetRunning(running);
    if (!running)
        m_renderer.WakeWaiting();
}

void FastOutput::Loop()
{
    while (m_switch.AwaitStart([this] { m_sink->Flush(); })) {
        const std::size_t frames = std::min(m_gate.FramesReady(BlockFrames), BlockFrames);
        if (frames == 0)
            m_gate.WaitForFrames();
        else if (m_gate.Render(m_block.data(), frames, m_channels))
            m_sink->Write(m_block.data(), frames);
    }
}

} // namespace velmo::engine
