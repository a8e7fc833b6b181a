#include "RestartCore.h"

#include "core/CallIfSet.h"

#include <utility>

namespace velmo {

RestartCore::RestartCore(EndingSteps& steps,
                         StartCore& startCore,
                         std::vector<controls::Form*> windows,
                         ports::Application& application)
    : m_steps(steps)
    , m_startCore(startCore)
    , m_windows(std::move(windows))
    , m_application(application)
{}

void RestartCore::Queue()
{
    if (std::exchange(m_queued, true))
        return;
    m_application.Post([this] {
        m_queued = false;
        Run();
    });
}

void RestartCore::Run()
{
    constexpr int FailedStart = 1;
    if (m_application.IsQuitting())
        return;
    m_steps.WriteVolume(VolumeText::Rounded);
    m_steps.StopMonitor();
    m_steps.FreeLibrary();
    m_steps.WritePlace();
    m_steps.SaveListAndEqualizer();
    UnloadWindows();
    CallIfSet(m_steps.Calls().ReleaseRegions);
    CallIfSet(m_steps.Calls().EndStandByGuard);
    CallIfSet(m_steps.Calls().RemoveTrayIcon);
    if (m_startCore.Run(StartKind::Restart)) {
        m_startCore.OpenList();
        m_steps.Modules().wmain.Show();
    } else if (!m_application.IsQuitting())
        m_application.Quit(FailedStart);
}

void RestartCore::UnloadWindows()
{
    for (controls::Form* window : m_windows) {
        window->Hide();
        window->Loaded = false;
    }
    forms::Playlist& playlist = m_steps.Modules().playlist;
    playlist.Hide();
    playlist.Loaded = false;
    playlist.tmrInfo.Enabled = false;
    playlist.pl.Clear();
    m_steps.Modules().wmain.Unload();
    CallIfSet(m_steps.Calls().RemoveAllWindows);
}

} // namespace velmo
