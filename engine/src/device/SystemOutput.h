#pragma once

#include "Output.h"
#include "SystemControl.h"

#include <memory>
#include <thread>

namespace velmo::engine {

/// The output to the sound server or the sound card. Without any it plays silently until one
/// appears; a device that is lost is opened again as soon as it's back.
class SystemOutput final : public Output
{
public:
    /// Returns within some seconds even if the server hangs. Null, and a reason in `error`, if
    /// there's a device that can't be opened. Throws std::system_error if there's no thread to
    /// have. API thread.
    [[nodiscard]] static std::unique_ptr<Output> Open(const OutputContext& context,
                                                      DeviceError& error);

    explicit SystemOutput(const OutputContext& context);

    /// Returns within some seconds even if the server hangs: then the thread and the stream are
    /// left to themselves, with everything they touch.
    ~SystemOutput() override;
    SystemOutput(const SystemOutput&) = delete;
    SystemOutput& operator=(const SystemOutput&) = delete;

    void SetRunning(bool running) noexcept override;

private:
    std::shared_ptr<SystemControl> m_control; ///< shared with the thread, which may outlive this
    std::thread m_thread;
};

} // namespace velmo::engine
