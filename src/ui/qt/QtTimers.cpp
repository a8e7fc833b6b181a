#include "QtTimers.h"

#include <QBasicTimer>
#include <QObject>

#include <utility>

namespace velmo::qt {

namespace {

/// Takes the timer's event itself: a signal of a timer object on the way to the tick would cost
/// more than the event.
class QtTicker final
    : public QObject
    , public ports::Timers::Ticker
{
public:
    QtTicker(ports::TimerPrecision precision, std::function<void()> tick)
        : m_type(precision == ports::TimerPrecision::Precise ? Qt::PreciseTimer : Qt::CoarseTimer)
        , m_tick(std::move(tick))
    {}

    void Start(int intervalMs) override { m_timer.start(intervalMs, m_type, this); }
    void Stop() override { m_timer.stop(); }

protected:
    void timerEvent(QTimerEvent*) override
    {
        const auto tick = m_tick; // which may destroy this
        tick();
    }

private:
    Qt::TimerType m_type;
    std::function<void()> m_tick;
    QBasicTimer m_timer;
};

} // namespace

std::unique_ptr<ports::Timers::Ticker> QtTimers::Create(ports::TimerPrecision precision,
                                                        std::function<void()> tick)
{
    return std::make_unique<QtTicker>(precision, std::move(tick));
}

} // namespace velmo::qt
