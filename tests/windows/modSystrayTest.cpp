#include "windows/modSystray.h"

#include "support/FakeMainWindow.h"

#include <gmock/gmock.h>

namespace velmo {
namespace {

using ports::TrayMessage;
using ::testing::ElementsAre;

class Systray : public ::testing::Test
{
protected:
    test::FakePlayer m_player;
    forms::wmain& m_window = m_player.wmain;
    test::FakeMainWindow m_fakes{m_player};
    modSystray& m_systray = m_fakes.systray;
    std::vector<std::string>& m_log = m_fakes.trayLog;
};

TEST_F(Systray, IconIsShownAtTheLoadIfTheSettingsWantItInAnyCase)
{
    m_window.Caption = "\xC3\xA4" + std::string(80, 'b'); // the first is one character
    for (const char* showIn : {"", "System Tray", "TASKBAR AND SYSTEM TRAY"}) {
        EXPECT_FALSE(m_systray.TrayIconShown) << "by the one before";
        m_player.settings.WriteSetting("Display", "ShowIn", showIn);
        m_systray.Load(m_player.settings);
    }
    EXPECT_TRUE(m_systray.TrayIconShown);
    m_systray.RemoveTrayIcon();
    EXPECT_FALSE(m_systray.TrayIconShown);
    EXPECT_THAT(m_log, ElementsAre("tray \xC3\xA4" + std::string(62, 'b'), "no tray"));
}

TEST_F(Systray, MouseOpensTheMenuThatFitsTheWindowOrRepaintsIt)
{
    forms::frmResources& menus = m_fakes.resources;
    m_window.RepaintNow = [this] { m_log.emplace_back("repaint"); };
    menus.Menu5.PopUpAtPointer = [&] {
        m_log.emplace_back(menus.STMin.Enabled ? "menu to minimise" : "menu to restore");
        EXPECT_NE(menus.STMin.Enabled, menus.STMax.Enabled);
    };
    for (const TrayMessage message :
         {TrayMessage::Touched, TrayMessage::DoubleClicked, TrayMessage::RightReleased})
        m_systray.STPBox_MouseMove(STPBoxEvent(message));
    m_systray.STPBox_MouseMove({.x = 514 * 15}); // the left button's release
    m_window.State = controls::WindowState::Minimized;
    m_systray.STPBox_MouseMove({.x = 517 * 15 + 7}); // the right one's, rounded
    EXPECT_THAT(m_log, ElementsAre("repaint", "menu to minimise", "menu to restore"));
}

} // namespace
} // namespace velmo
