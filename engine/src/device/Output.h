#pragma once

#include "DeviceControl.h"

namespace velmo::engine {

class DeviceClock;

/// An open output. It renders through gates of its own on a thread of its own and tells the clock
/// what is heard. It is made stopped; its destructor closes it: afterwards no `Render` runs.
class Output
{
public:
    Output() = default;
    virtual ~Output() = default;
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    /// Whether frames shall be pulled. Only leaves the wish: never waits for the output's thread.
    /// Any thread but the output's own.
    virtual void SetRunning(bool running) noexcept = 0;
};

/// What every output is made of. All of it outlives it.
struct OutputContext
{
    Renderer& renderer;
    DeviceClock& clock;
    const DeviceSettings& settings;
    DeviceNotice& notice; ///< holds what the kind of output is; told when more is known
};

} // namespace velmo::engine
