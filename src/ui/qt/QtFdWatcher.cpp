#include "QtFdWatcher.h"

#include "controls/EventEntry.h"

#include <QSocketNotifier>

namespace velmo::qt {

namespace {

/// It may go while its own notice runs, so the notifier is only switched off and is destroyed after
/// the event.
class QtWatch final : public ports::FdWatcher::Watch
{
public:
    QtWatch(int fd, std::function<void()> readable)
        : m_notifier(new QSocketNotifier(fd, QSocketNotifier::Read))
    {
        QObject::connect(m_notifier.get(),
                         &QSocketNotifier::activated,
                         m_notifier.get(),
                         [readable = std::move(readable)] { controls::RunEvent(readable); });
    }
    QtWatch(const QtWatch&) = delete;
    QtWatch& operator=(const QtWatch&) = delete;
    ~QtWatch() override { m_notifier->setEnabled(false); }

private:
    QScopedPointer<QSocketNotifier, QScopedPointerDeleteLater> m_notifier;
};

} // namespace

std::unique_ptr<ports::FdWatcher::Watch> QtFdWatcher::WatchReadable(int fd,
                                                                    std::function<void()> readable)
{
    return std::make_unique<QtWatch>(fd, std::move(readable));
}

} // namespace velmo::qt
