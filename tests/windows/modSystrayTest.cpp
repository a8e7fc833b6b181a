#include "windows/modSystray.h"

#include "support/FakeDialogs.h"
#include "support/FakeSettings.h"
#include "support/FakeTray.h"

#include <gmock/gmock.h>

namespace velmo {
namespace {

using ports::TrayMessage;
using ::testing::ElementsAre;

class Systray : public ::testing::Test
{
protected:
    std::vector<std::string> m_log;
    test::FakeTray m_tray{m_log};
    forms::wmain m_window;
    forms::frmResources m_resources;
    modSystray m_systray{m_tray, m_window, m_resources};
};

TEST_F(Systray, IconIsShownAtTheLoadIfTheSettingsWantItInAnyCase)
{
    test::FakeSettings file;
    test::FakeDialogs dialogs;
    modINI settings(file, dialogs, "/app/");
    for (const char* unwanted : {"", "Taskbar", "System Tray"}) {
        settings.WriteSetting("Display", "ShowIn", unwanted);
        m_systray.Load(settings);
        EXPECT_FALSE(m_systray.TrayIconShown) << unwanted;
    }
    std::string longCaption = "\xC3\xA4"; // one character
    longCaption.append(80, 'b');
    m_window.Caption = longCaption;
    settings.WriteSetting("Display", "ShowIn", "TASKBAR AND SYSTEM TRAY");
    m_systray.Load(settings);
    EXPECT_TRUE(m_systray.TrayIconShown);
    m_systray.RemoveTrayIcon();
    EXPECT_FALSE(m_systray.TrayIconShown);
    EXPECT_THAT(m_log, ElementsAre("tray \xC3\xA4" + std::string(62, 'b'), "no tray"));
}

TEST_F(Systray, MouseOpensTheMenuThatFitsTheWindowOrRepaintsIt)
{
    m_window.RepaintNow = [this] { m_log.emplace_back("repaint"); };
    m_resources.Menu5.PopUpAtPointer = [this] {
        m_log.emplace_back(m_resources.STMin.Enabled ? "menu to minimise" : "menu to restore");
        EXPECT_NE(m_resources.STMin.Enabled, m_resources.STMax.Enabled);
    };
    const auto send = [this](double x) { m_systray.STPBox_MouseMove({.x = x}); };
    const auto send1 = [&](TrayMessage message) { send(STPBoxEvent(message).x); };
    for (const TrayMessage message :
         {TrayMessage::Touched, TrayMessage::DoubleClicked, TrayMessage::RightReleased})
        send1(message);
    send(514 * 15); // the left button's release
    m_window.State = controls::WindowState::Minimized;
    send1(TrayMessage::DoubleClicked);
    EXPECT_EQ(m_window.State.Get(), controls::WindowState::Minimized);
    EXPECT_TRUE(m_resources.STMax.Enabled);
    send(517 * 15 + 7); // rounded
    EXPECT_THAT(m_log, ElementsAre("repaint", "menu to minimise", "repaint", "menu to restore"));
}

} // namespace
} // namespace velmo
