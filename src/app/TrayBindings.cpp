#include "Program.h"

#include "controls/EventEntry.h"

namespace velmo {

/// The icon in the tray.
void Program::BindTray()
{
    m_tray.Message = [this](ports::TrayMessage message) {
        controls::CallSlot(m_resources.STPBox.MouseMove, STPBoxEvent(message));
    };
    constexpr std::size_t OfIcon = 4; // `Menu5`
    m_tray.Menu = [this] { return m_menuViews[OfIcon].MakePopup(); };
    m_resources.STPBox.MouseMove = [this](const controls::MouseEvent& event) {
        m_systray.STPBox_MouseMove(event);
    };
}

} // namespace velmo
