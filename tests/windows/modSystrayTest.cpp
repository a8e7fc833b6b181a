#include "windows/modSystray.h"

#include "windows/MainWindowFixture.h"

namespace velmo {
namespace {

using ports::TrayMessage;
using ::testing::ElementsAre;

class Systray : public test::MainWindowFixture
{
protected:
    modSystray& m_systray = m_fakes.systray;
    std::vector<std::string>& m_log = m_fakes.trayLog;
};

TEST_F(Systray, IconIsShownAtTheLoadIfTheSettingsWantItInAnyCase)
{
    m_form.Caption = "\xC3\xA4" + std::string(80, 'b'); // the first is one character
    for (const char* showIn : {"", "System Tray", "TASKBAR AND SYSTEM TRAY"}) {
        EXPECT_FALSE(m_systray.TrayIconShown) << "by the one before";
        m_player.Set("Display", "ShowIn", showIn);
        m_systray.Load(m_player.settings);
    }
    EXPECT_TRUE(m_systray.TrayIconShown);
    m_systray.RemoveTrayIcon();
    EXPECT_FALSE(m_systray.TrayIconShown);
    EXPECT_THAT(m_log, ElementsAre("tray \xC3\xA4" + std::string(62, 'b'), "no tray"));
}

} // namespace
} // namespace velmo
