#include "modSystray.h"

#include "core/Utf8.h"

namespace velmo {

modSystray::modSystray(ports::Tray& tray, forms::wmain& window)
    : m_tray(tray)
    , m_window(window)
{}

void modSystray::AddTrayIcon()
{
    constexpr std::size_t LongestToolTip = 63;
    m_tray.Add(FirstCharacters(m_window.Caption.Get(), LongestToolTip));
    TrayIconShown = true;
}

void modSystray::RemoveTrayIcon()
{
    m_tray.Remove();
    TrayIconShown = false;
}

} // namespace velmo
