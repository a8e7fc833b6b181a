#pragma once

#include <functional>
#include <memory>

namespace velmo::ports {

/// How near to its time a tick must be.
enum class TimerPrecision
{
    Coarse,  ///< within 5 % of the interval, which saves wake-ups
    Precise, ///< within a millisecond or two
};

/// Interval timers of the user-interface thread; the ticks come on it too, between other events.
class Timers
{
public:
    virtual ~Timers() = default;

    /// One repeating timer, stopped when made. Destroying it ends its ticks.
    class Ticker
    {
    public:
        virtual ~Ticker() = default;

        /// Starts or restarts the timer; each later tick follows one interval after the one before.
        virtual void Start(int intervalMs) = 0;
        virtual void Stop() = 0;
    };

    [[nodiscard]] virtual std::unique_ptr<Ticker> Create(TimerPrecision precision,
                                                         std::function<void()> tick) = 0;
};

} // namespace velmo::ports
