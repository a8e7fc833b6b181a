#include "BringUp.h"

#include "core/SettingsKeys.h"
#include "core/TextRules.h"

namespace velmo {

BringUp::BringUp(forms::frmSplash& splash,
                 forms::wmain& wmain,
                 StartCore& startCore,
                 modINI& settings,
                 ports::Application& application)
    : m_splash(splash)
    , m_wmain(wmain)
    , m_startCore(startCore)
    , m_settings(settings)
    , m_application(application)
{}

void BringUp::Run()
{
    if (!IsTrue(m_settings.ReadSetting(sections::Options, keys::ShowSplashScreen, "False"))) {
        StartAndShow();
        return;
    }
    m_splash.AlwaysOnTop =
        IsTrue(m_settings.ReadSetting(sections::Options, keys::AllwaysOnTop, "False"));
    m_splash.tmrcZat.Enabled = true;
    m_splash.Show();
    if (m_splash.RepaintNow)
        m_splash.RepaintNow();
}

void BringUp::tmrcZat_Timer()
{
    // Once only: a message box of the start serves events, and a second tick would start twice.
    m_splash.tmrcZat.Enabled = false;
    StartAndShow();
    m_splash.Hide();
}

void BringUp::StartAndShow()
{
    constexpr int FailedStart = 1;
    if (m_startCore.Run(StartKind::Process)) {
        m_wmain.FirstPicture = [this] { m_startCore.OpenList(); };
        if (m_wmain.State.Get() == controls::WindowState::Minimized)
            m_startCore.OpenList(); // there may be no picture for long
        m_wmain.Show();
    } else if (!m_application.IsQuitting())
        m_application.Quit(FailedStart);
}

} // namespace velmo
