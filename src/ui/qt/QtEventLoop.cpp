#include "QtEventLoop.h"

#include "controls/EventEntry.h"

#include <QGuiApplication>

namespace velmo::qt {

QtEventLoop::QtEventLoop()
{
    QGuiApplication::setQuitOnLastWindowClosed(false);
}

void QtEventLoop::Post(std::function<void()> handler)
{
    QMetaObject::invokeMethod(
        QCoreApplication::instance(),
        [handler = std::move(handler)] { controls::RunEvent(handler); },
        Qt::QueuedConnection);
}

void QtEventLoop::Quit(int status)
{
    Post([status] { QCoreApplication::exit(status); });
}

} // namespace velmo::qt
