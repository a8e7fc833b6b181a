#include "modSystray.h"

#include "core/CallIfSet.h"
#include "core/NumberText.h"
#include "core/SettingsKeys.h"
#include "core/TextRules.h"
#include "core/Utf8.h"

namespace velmo {

namespace {

constexpr double TwipsPerPixel = 15;

} // namespace

modSystray::modSystray(ports::Tray& tray, forms::wmain& window, forms::frmResources& resources)
    : m_tray(tray)
    , m_window(window)
    , m_resources(resources)
{}

void modSystray::Load(modINI& settings)
{
    if (EqualsIgnoringCase(settings.ReadSetting(sections::Display, keys::ShowIn, "Taskbar"),
                           "taskbar and system tray"))
        AddTrayIcon();
}

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

void modSystray::STPBox_MouseMove(const controls::MouseEvent& event)
{
    const bool isMinimized = m_window.State.Get() == controls::WindowState::Minimized;
    m_resources.STMin.Enabled = !isMinimized;
    m_resources.STMax.Enabled = isMinimized;
    TrayMouseEvent(event.x);
}

void modSystray::TrayMouseEvent(double x)
{
    switch (static_cast<ports::TrayMessage>(RoundHalfEven(x / TwipsPerPixel))) {
    case ports::TrayMessage::DoubleClicked: CallIfSet(m_window.RepaintNow); break;
    case ports::TrayMessage::RightReleased: CallIfSet(m_resources.Menu5.PopUpAtPointer); break;
    case ports::TrayMessage::Touched: break;
    }
}

controls::MouseEvent STPBoxEvent(ports::TrayMessage message)
{
    return {.x = static_cast<double>(message) * TwipsPerPixel};
}

} // namespace velmo
