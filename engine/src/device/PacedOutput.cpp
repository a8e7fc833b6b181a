// The thread sleeps until an absolute time: the moment at which all that has been rendered is
// heard. That time follows from the frames rendered since the start, so no error adds up. When the
// machine was asleep or too busy for longer than a few blocks, the clock is started anew at the
// present instead of rendering the missed time in one go.

#include "PacedOutput.h"

#include "OutputThread.h"

#include <algorithm>
#include <utility>

namespace velmo::engine {

namespace {

using std::chrono::steady_clock;

constexpr std::chrono::milliseconds ShortBlock{10};
constexpr std::chrono::milliseconds LongBlock{50};
// Nobody hears it, and every wake costs a processor that was asleep a tenth of a millisecond.
constexpr std::chrono::milliseconds LongSilentBlock{200};
constexpr std::chrono::milliseconds ShortBlocksFor{100};
constexpr std::chrono::milliseconds MaxCatchUp{50};

std::size_t FramesOf(std::chrono::milliseconds time, std::uint32_t rate)
{
    return std::max<std::size_t>(FramesIn(time, rate), 1);
}

} // namespace

PacedOutput::PacedOutput(const OutputContext& context, std::unique_ptr<BlockSink> sink)
    : m_clock(context.clock)
    , m_channels(context.settings.channels)
    , m_sink(std::move(sink))
    , m_gate(context.renderer, context.clock)
    , m_longBlock(FramesOf(m_sink ? LongBlock : LongSilentBlock, context.settings.sampleRate))
    , m_block(m_longBlock * m_channels)
{
    m_gate.Open();
    m_thread = StartEngineThread("velmo-clock", [this] { Loop(); });
}

PacedOutput::~PacedOutput()
{
    m_switch.Quit();
    m_gate.Close();
    if (m_sink)
        m_sink->Abandon();
    m_thread.join();
}

void PacedOutput::SetRunning(bool running) noexcept
{
    m_switch.SetRunning(running);
}

void PacedOutput::Loop()
{
    AskForRealTime();
    while (m_switch.AwaitStart([this] { Stand(); })) {
        RenderBlock();
        m_switch.SleepUntil(NextBlock());
    }
}

void PacedOutput::Stand() noexcept
{
    if (m_started)
        m_clock.Stand(m_clock.Heard(steady_clock::now()));
    m_started = false;
    if (m_sink)
        m_sink->Flush();
}

void PacedOutput::RenderBlock() noexcept
{
    const SteadyTime now = steady_clock::now();
    const std::uint64_t frame = m_clock.Rendered();
    const bool late =
        m_started && now - m_startTime - TimeOf(frame - m_startFrame, m_clock.Rate()) > MaxCatchUp;
    if (!m_started || late) {
        m_startFrame = late ? frame : m_clock.Heard(now);
        m_startTime = now;
        m_started = true;
        m_clock.Run(m_startFrame, m_startTime);
    }
    const bool fresh = frame - m_startFrame < FramesIn(ShortBlocksFor, m_clock.Rate());
    const std::size_t frames = fresh ? FramesOf(ShortBlock, m_clock.Rate()) : m_longBlock;
    if (!m_gate.Render(m_block.data(), frames, m_channels))
        return;
    m_clock.SetLatency(m_clock.Rendered() - m_clock.Heard(now));
    if (m_sink) {
        m_sink->Write(m_block.data(), frames);
        m_sink->Flush(); // in real time, for those who read along
    }
}

/// When all that has been rendered has been heard.
SteadyTime PacedOutput::NextBlock() const noexcept
{
    return m_startTime + TimeOf(m_clock.Rendered() - m_startFrame, m_clock.Rate());
}

} // namespace velmo::engine
