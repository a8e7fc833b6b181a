#include "ColourScheme.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QPalette>
#include <QStyle>

#include <utility>

namespace velmo::qt {

namespace {

QString Portal()
{
    return QStringLiteral("org.freedesktop.portal.Desktop");
}

QString PortalPath()
{
    return QStringLiteral("/org/freedesktop/portal/desktop");
}

QString Settings()
{
    return QStringLiteral("org.freedesktop.portal.Settings");
}

QPalette DarkPalette()
{
    const QColor window(0x2e, 0x2f, 0x32);
    const QColor base(0x1f, 0x20, 0x22);
    const QColor dimmed(0x85, 0x86, 0x88);
    QPalette palette(QColor(0x3a, 0x3b, 0x3f), window);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::AlternateBase, window);
    palette.setColor(QPalette::ToolTipBase, base);
    palette.setColor(QPalette::ToolTipText, palette.color(QPalette::Text));
    palette.setColor(QPalette::PlaceholderText, dimmed);
    palette.setColor(QPalette::Link, QColor(0x5a, 0xb4, 0xff));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, dimmed);
    return palette;
}

/// The portal packs a value twice.
QVariant Unpacked(QVariant value)
{
    while (value.metaType() == QMetaType::fromType<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

bool HasPlainStyle()
{
    return QApplication::style()->name() == QStringLiteral("fusion")
           && QApplication::palette().window().color().lightness() > 128;
}

} // namespace

ColourScheme::ColourScheme()
{
    m_ask.setSingleShot(true);
    connect(&m_ask, &QTimer::timeout, this, &ColourScheme::Ask);
}

void ColourScheme::Follow()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected() || !HasPlainStyle())
        return;
    bus.connect(Portal(),
                PortalPath(),
                Settings(),
                QStringLiteral("SettingChanged"),
                &m_ask,
                SLOT(start()));
    Ask();
}

void ColourScheme::Ask()
{
    QDBusMessage question =
        QDBusMessage::createMethodCall(Portal(), PortalPath(), Settings(), QStringLiteral("Read"));
    question << QStringLiteral("org.freedesktop.appearance") << QStringLiteral("color-scheme");
    question.setAutoStartService(false);
    auto* call =
        new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(question), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, [this, call] {
        constexpr uint PrefersDark = 1;
        const QDBusPendingReply<QDBusVariant> reply = *call;
        call->deleteLater();
        if (reply.isValid())
            Take(Unpacked(reply.value().variant()).toUInt() == PrefersDark);
    });
}

void ColourScheme::Take(bool isDark)
{
    if (std::exchange(m_isDark, isDark) != isDark)
        QApplication::setPalette(isDark ? DarkPalette() : QPalette());
}

} // namespace velmo::qt
