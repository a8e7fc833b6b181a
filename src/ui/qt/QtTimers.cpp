#include "QtTimers.h"

#include <QTimer>

namespace velmo::qt {

namespace {

class QtTicker final : public ports::Timers::Ticker
{
public:
    QtTicker(ports::TimerPrecision precision, std::function<void()> tick)
    {
        m_timer.setTimerType(precision == ports::TimerPrecision::Precise ? Qt::PreciseTimer
                                                                         : Qt::CoarseTimer);
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, std::move(tick));
    }

    void Start(int intervalMs) override { m_timer.start(intervalMs); }
    void Stop() override { m_timer.stop(); }

private:
    QTimer m_timer;
};

} // namespace

std::unique_ptr<ports::Timers::Ticker> QtTimers::Create(ports::TimerPrecision precision,
                                                        std::function<void()> tick)
{
    return std::make_unique<QtTicker>(precision, std::move(tick));
}

} // namespace velmo::qt
