#pragma once

#include "Controls.h"
#include "Form.h"

#include "ports/Timers.h"

#include <memory>
#include <vector>

namespace velmo::controls {

/// Couples a timer control to real time: it runs while the control is enabled, not at rest, and its
/// interval is above 0. Enabling it, ending its rest, or changing the interval of a running timer,
/// starts a whole new interval; other changes do not disturb it. A tick calls the slot through the
/// event entry. User-interface thread; the control must outlive the binding, and `timers` too.
class TimerBinding
{
public:
    TimerBinding(Timer& timer, ports::Timers& timers);
    TimerBinding(const TimerBinding&) = delete;
    TimerBinding& operator=(const TimerBinding&) = delete;
    ~TimerBinding();

private:
    void Follow();

    Timer& m_timer;
    std::unique_ptr<ports::Timers::Ticker> m_ticker;
    int m_runningMs = 0; ///< 0 while stopped
};

/// A binding for every timer of a form.
class FormTimers
{
public:
    FormTimers(Form& form, ports::Timers& timers);

private:
    std::vector<std::unique_ptr<TimerBinding>> m_bindings;
};

} // namespace velmo::controls
