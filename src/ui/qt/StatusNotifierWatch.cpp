// The watcher of icons is a service of the desktop's, with which the hosts, mostly a panel,
// register. It may come and go, and so may they:
// https://www.freedesktop.org/wiki/Specifications/StatusNotifierItem

#include "StatusNotifierWatch.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>

#include <utility>

namespace velmo::qt {

namespace {

QString Watcher()
{
    return QStringLiteral("org.kde.StatusNotifierWatcher");
}

QString WatcherPath()
{
    return QStringLiteral("/StatusNotifierWatcher");
}

} // namespace

StatusNotifierWatch::StatusNotifierWatch(std::function<void(bool hasHost)> onAnswer)
    : m_onAnswer(std::move(onAnswer))
{
    m_ask.setSingleShot(true);
    connect(&m_ask, &QTimer::timeout, this, &StatusNotifierWatch::AskForHost);
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        QTimer::singleShot(0, this, [this] { m_onAnswer(false); });
        return;
    }
    auto* watcher =
        new QDBusServiceWatcher(Watcher(), bus, QDBusServiceWatcher::WatchForRegistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceRegistered, &m_ask, [this] { m_ask.start(); });
    bus.connect(Watcher(),
                WatcherPath(),
                Watcher(),
                QStringLiteral("StatusNotifierHostRegistered"),
                &m_ask,
                SLOT(start()));
    AskForHost();
}

void StatusNotifierWatch::AskForHost()
{
    QDBusMessage question =
        QDBusMessage::createMethodCall(Watcher(),
                                       WatcherPath(),
                                       QStringLiteral("org.freedesktop.DBus.Properties"),
                                       QStringLiteral("Get"));
    question << Watcher() << QStringLiteral("IsStatusNotifierHostRegistered");
    question.setAutoStartService(false);
    constexpr int PatienceMs = 2000;
    auto* call = new QDBusPendingCallWatcher(
        QDBusConnection::sessionBus().asyncCall(question, PatienceMs), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, [this, call] {
        const QDBusPendingReply<QDBusVariant> reply = *call;
        call->deleteLater();
        m_onAnswer(reply.isValid() && reply.value().variant().toBool());
    });
}

} // namespace velmo::qt
