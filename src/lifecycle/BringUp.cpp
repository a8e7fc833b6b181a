#include "BringUp.h"

#include "core/SettingsKeys.h"
#include "core/TextRules.h"

#include <algorithm>
#include <utility>

namespace velmo {

BringUp::BringUp(forms::frmSplash& splash,
                 forms::wmain& wmain,
                 std::vector<controls::Form*> neighbours,
                 StartCore& startCore,
                 modINI& settings,
                 ports::Application& application)
    : m_splash(splash)
    , m_wmain(wmain)
    , m_windows(std::move(neighbours))
    , m_startCore(startCore)
    , m_settings(settings)
    , m_application(application)
{
    m_windows.push_back(&wmain);
}

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
        for (controls::Form* window : m_windows)
            window->FirstPicture = [this] { OpenListBehindPictures(); };
        if (m_wmain.State.Get() == controls::WindowState::Minimized)
            m_startCore.OpenList(); // there may be no picture for long
        m_wmain.Show();
    } else if (!m_application.IsQuitting())
        m_application.Quit(FailedStart);
}

/// A long list would keep the windows waiting that have no picture yet.
void BringUp::OpenListBehindPictures()
{
    const bool isPictureMissing =
        std::any_of(m_windows.begin(), m_windows.end(), [](const controls::Form* window) {
            return window->Visible && !window->HasPicture;
        });
    if (!isPictureMissing)
        m_startCore.OpenList();
}

} // namespace velmo
