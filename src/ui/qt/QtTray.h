#pragma once

#include "StatusNotifierWatch.h"
#include "X11TrayWatch.h"

#include "ports/Tray.h"

#include <QString>

#include <functional>
#include <memory>

class QMenu;
class QSystemTrayIcon;

namespace velmo::qt {

/// The icon in the desktop's tray, over the session bus or, where that has none, in an X11 panel.
/// The toolkit looks for the kind of tray once in a process; so its icon is made when a tray is
/// there and not before, however late that is. It outlives the tray, and is back with the next one.
class QtTray final : public ports::Tray
{
public:
    QtTray();
    ~QtTray() override;
    QtTray(const QtTray&) = delete;
    QtTray& operator=(const QtTray&) = delete;

    /// The icon is made after the present event at the earliest, so that a start isn't held up.
    void Add(const std::string& toolTip) override;
    void Remove() override;

    /// Gives the icon's menu for trays that show it by themselves; asked when the icon is made. Not
    /// set or null: they get none. The menu outlives the icon.
    std::function<QMenu*()> Menu;

private:
    enum class Kind
    {
        StatusNotifier, ///< the tray is told of the menu and shows it
        X11,            ///< the icon is a little window, which gets the mouse
    };

    void Watch();
    void QueueIcon(Kind kind);
    void MakeIcon(Kind kind);
    void Send(ports::TrayMessage message) const;

    QString m_toolTip;
    QObject m_pending; ///< bears what is queued; ends with the tray
    bool m_isWanted = false;
    // While no tray is known.
    std::unique_ptr<StatusNotifierWatch> m_statusNotifier;
    std::unique_ptr<X11TrayWatch> m_x11; ///< from the moment on that the bus is known to have none

    std::unique_ptr<QSystemTrayIcon> m_icon;
};

} // namespace velmo::qt
