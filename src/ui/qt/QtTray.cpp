#include "QtTray.h"

#include "ProgramIcon.h"
#include "QtText.h"

#include "controls/EventEntry.h"

#include <QMenu>
#include <QSystemTrayIcon>

#include <utility>

namespace velmo::qt {

QtTray::QtTray() = default;

QtTray::~QtTray() = default;

void QtTray::Add(const std::string& toolTip)
{
    if (std::exchange(m_isWanted, true))
        return;
    m_toolTip = FromBytes(toolTip);
    QMetaObject::invokeMethod(
        &m_pending, [this] { Watch(); }, Qt::QueuedConnection);
}

void QtTray::Remove()
{
    m_isWanted = false;
    m_icon.reset();
    m_statusNotifier.reset();
    m_x11.reset();
}

void QtTray::Watch()
{
    if (!m_isWanted || m_statusNotifier || m_icon)
        return;
    m_statusNotifier = std::make_unique<StatusNotifierWatch>([this](bool hasHost) {
        if (hasHost)
            QueueIcon(Kind::StatusNotifier);
        else if (!m_x11)
            m_x11 = std::make_unique<X11TrayWatch>([this] { QueueIcon(Kind::X11); });
    });
}

/// Not from within the watch that tells of it, which ends then.
void QtTray::QueueIcon(Kind kind)
{
    QMetaObject::invokeMethod(
        &m_pending, [this, kind] { MakeIcon(kind); }, Qt::QueuedConnection);
}

void QtTray::MakeIcon(Kind kind)
{
    if (!m_isWanted || m_icon)
        return;
    m_statusNotifier.reset();
    m_x11.reset();
    m_icon = std::make_unique<QSystemTrayIcon>(ProgramIcon());
    m_icon->setToolTip(m_toolTip);
    QObject::connect(m_icon.get(),
                     &QSystemTrayIcon::activated,
                     &m_pending,
                     [this](QSystemTrayIcon::ActivationReason reason) {
                         if (reason == QSystemTrayIcon::DoubleClick)
                             Send(ports::TrayMessage::DoubleClicked);
                         else if (reason == QSystemTrayIcon::Context)
                             Send(ports::TrayMessage::RightReleased);
                     });
    QMenu* menu = kind == Kind::StatusNotifier && Menu ? Menu() : nullptr;
    if (menu != nullptr) {
        QObject::connect(
            menu, &QMenu::aboutToShow, m_icon.get(), [this] { Send(ports::TrayMessage::Touched); });
        m_icon->setContextMenu(menu);
    }
    m_icon->show();
}

void QtTray::Send(ports::TrayMessage message) const
{
    controls::CallSlot(Message, message);
}

} // namespace velmo::qt
