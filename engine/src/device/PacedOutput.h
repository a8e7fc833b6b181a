#pragma once

#include "BlockSink.h"
#include "DeviceClock.h"
#include "Output.h"
#include "RenderGate.h"
#include "RunSwitch.h"

#include <memory>
#include <thread>
#include <vector>

namespace velmo::engine {

/// The output without a sound card: pulls blocks of 10 ms, soon of 50 ms, on the steady clock. A
/// block counts as heard frame by frame from the moment it's rendered. Stopped it sleeps without
/// any wake-up.
class PacedOutput final : public Output
{
public:
    /// `sink` gets every block; null: nobody does. Throws std::system_error if there's no thread to
    /// have.
    PacedOutput(const OutputContext& context, std::unique_ptr<BlockSink> sink);
    ~PacedOutput() override;
    PacedOutput(const PacedOutput&) = delete;
    PacedOutput& operator=(const PacedOutput&) = delete;

    void SetRunning(bool running) noexcept override;

private:
    void Loop();
    void RenderBlock() noexcept;
    [[nodiscard]] SteadyTime NextBlock() const noexcept;
    void Stand() noexcept;

    DeviceClock& m_clock;
    std::size_t m_channels;
    std::unique_ptr<BlockSink> m_sink;
    RenderGate m_gate;
    const std::size_t m_longBlock; ///< frames
    std::vector<float> m_block;

    // Where the clock was started last; the output's thread only.
    std::uint64_t m_startFrame = 0;
    SteadyTime m_startTime;
    bool m_started = false;

    RunSwitch m_switch;
    std::thread m_thread;
};

} // namespace velmo::engine
