#include "TurnEnd.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QPointer>

#include <deque>
#include <utility>

namespace velmo::qt {

namespace {

struct Waiting
{
    QPointer<QObject> context;
    std::function<void()> handler;
};

/// Ends with the application, whose event loop it listens to.
class TurnEnds final : public QObject
{
public:
    explicit TurnEnds(QCoreApplication& application)
        : QObject(&application)
    {
        const QAbstractEventDispatcher* const loop = QAbstractEventDispatcher::instance();
        connect(loop, &QAbstractEventDispatcher::aboutToBlock, this, &TurnEnds::Run);
        connect(loop, &QAbstractEventDispatcher::awake, this, &TurnEnds::Run);
    }

    void Add(Waiting waiting) { m_waiting.push_back(std::move(waiting)); }

private:
    /// A handler may run an event loop of its own, whose turns take over what is left here.
    void Run()
    {
        constexpr int Most = 64; // handlers that queue each other can't hold the event loop up
        for (int count = 0; count < Most && !m_waiting.empty(); ++count) {
            const Waiting next = std::move(m_waiting.front());
            m_waiting.pop_front();
            if (!next.context.isNull())
                next.handler();
        }
        if (!m_waiting.empty())
            QAbstractEventDispatcher::instance()->wakeUp();
    }

    std::deque<Waiting> m_waiting;
};

} // namespace

void AtTurnEnd(QObject& context, std::function<void()> handler)
{
    static QPointer<TurnEnds> ends;
    if (ends.isNull())
        ends = new TurnEnds(*QCoreApplication::instance());
    ends->Add({.context = &context, .handler = std::move(handler)});
}

} // namespace velmo::qt
