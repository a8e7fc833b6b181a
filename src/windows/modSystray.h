#pragma once

#include "forms/wmain.h"
#include "ports/Tray.h"

namespace velmo {

/// The icon in the tray, the second place of the program while it is minimised. User-interface
/// thread only.
class modSystray
{
public:
    modSystray(ports::Tray& tray, forms::wmain& window);

    bool TrayIconShown = false;

    /// Shows the icon, with the main window's caption as its tool tip. May be called twice.
    void AddTrayIcon();
    void RemoveTrayIcon();

private:
    ports::Tray& m_tray;
    forms::wmain& m_window;
};

} // namespace velmo
