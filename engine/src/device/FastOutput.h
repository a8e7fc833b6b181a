#pragma once

#include "BlockSink.h"
#include "Output.h"
#include "RenderGate.h"
#include "RunSwitch.h"

#include <memory>
#include <thread>
#include <vector>

namespace velmo::engine {

/// The output without a clock: while running it renders all that is ready, in blocks of up to 4096
/// frames, and never more, so that no gap for want of decoded sound comes about. A frame is heard
/// when it's rendered.
class FastOutput final : public Output
{
public:
    /// Throws std::system_error if there's no thread to have.
    FastOutput(const OutputContext& context, std::unique_ptr<BlockSink> sink);
    ~FastOutput() override;
    FastOutput(const FastOutput&) = delete;
    FastOutput& operator=(const FastOutput&) = delete;

    void SetRunning(bool running) noexcept override;

private:
    void Loop();

    Renderer& m_renderer;
    std::size_t m_channels;
    std::unique_ptr<BlockSink> m_sink;
    RenderGate m_gate;
    std::vector<float> m_block;
    RunSwitch m_switch;
    std::thread m_thread;
};

} // namespace velmo::engine
