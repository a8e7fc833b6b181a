#pragma once

#include "core/modINI.h"
#include "forms/frmResources.h"
#include "forms/wmain.h"
#include "ports/Tray.h"

namespace velmo {

/// The icon in the tray, the second place of the program while it is minimised. User-interface
/// thread only.
class modSystray
{
public:
    modSystray(ports::Tray& tray, forms::wmain& window, forms::frmResources& resources);

    bool TrayIconShown = false;

    /// The main window's load: shows the icon if the setting "ShowIn" wants it.
    void Load(modINI& settings);

    /// Shows the icon, with the main window's caption as its tool tip. May be called twice.
    void AddTrayIcon();
    void RemoveTrayIcon();

    /// The box of the icon was told of the mouse; x bears the message, in twips. Lets the entries
    /// of the icon's menu fit the window's state before anything else.
    void STPBox_MouseMove(const controls::MouseEvent& event);

    /// `x` is the message's number times the twips of a pixel. A double click repaints the main
    /// window and does not bring it back, a release of the right button opens the menu.
    void TrayMouseEvent(double x);

private:
    ports::Tray& m_tray;
    forms::wmain& m_window;
    forms::frmResources& m_resources;
};

/// The event by which the icon's box is told of a message.
controls::MouseEvent STPBoxEvent(ports::TrayMessage message);

} // namespace velmo
