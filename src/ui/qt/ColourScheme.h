#pragma once

#include <QObject>
#include <QTimer>

namespace velmo::qt {

/// Lets menus, dialogs and framed windows be dark where the desktop is, also where the toolkit
/// knows no more of the desktop than its portal, https://flatpak.github.io/xdg-desktop-portal/. A
/// desktop with a style of the toolkit's sees to that by itself. Without a session bus or portal
/// nothing changes. User-interface thread; all answers come through the event loop.
class ColourScheme final : public QObject
{
public:
    ColourScheme();

    /// From now on follows the desktop's wish.
    void Follow();

private:
    void Ask();
    void Take(bool isDark);

    QTimer m_ask; ///< what the portal's signal starts
    bool m_isDark = false;
};

} // namespace velmo::qt
