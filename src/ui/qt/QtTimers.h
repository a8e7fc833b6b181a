#pragma once

#include "ports/Timers.h"

namespace velmo::qt {

/// Timers of the event loop. User-interface thread.
class QtTimers final : public ports::Timers
{
public:
    [[nodiscard]] std::unique_ptr<Ticker> Create(ports::TimerPrecision precision,
                                                 std::function<void()> tick) override;
};

} // namespace velmo::qt
