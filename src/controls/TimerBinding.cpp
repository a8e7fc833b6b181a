#include "TimerBinding.h"

#include "EventEntry.h"

#include <algorithm>

namespace velmo::controls {

namespace {

ports::TimerPrecision PrecisionOf(const Timer& timer)
{
    return timer.Accuracy == TimerAccuracy::Precise ? ports::TimerPrecision::Precise
                                                    : ports::TimerPrecision::Coarse;
}

} // namespace

TimerBinding::TimerBinding(Timer& timer, ports::Timers& timers)
    : m_timer(timer)
    , m_ticker(timers.Create(PrecisionOf(timer), [&timer] { CallSlot(timer.Tick); }))
{
    m_timer.Changed = [this] { Follow(); };
    Follow();
}

TimerBinding::~TimerBinding()
{
    m_timer.Changed = nullptr;
}

void TimerBinding::Follow()
{
    const bool runs = m_timer.Enabled && m_timer.Interval > 0 && !m_timer.Resting;
    const int wantedMs = runs ? std::max(m_timer.Interval.Get(), m_timer.LeastMs.Get()) : 0;
    if (wantedMs == m_runningMs)
        return;
    m_runningMs = wantedMs;
    if (wantedMs > 0)
        m_ticker->Start(wantedMs);
    else
        m_ticker->Stop();
}

FormTimers::FormTimers(Form& form, ports::Timers& timers)
{
    for (Control* control : form.Controls()) {
        if (control->Kind == ControlKind::Timer)
            m_bindings.push_back(
                std::make_unique<TimerBinding>(static_cast<Timer&>(*control), timers));
    }
}

} // namespace velmo::controls
