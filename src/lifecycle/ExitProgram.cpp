#include "ExitProgram.h"

#include "core/NumberText.h"
#include "core/SettingsKeys.h"
#include "sound/ChannelQueries.h"

#include <utility>

namespace velmo {

ExitProgram::ExitProgram(const modBass& bass,
                         modINI& settings,
                         TransportState& state,
                         forms::wmain& wmain,
                         std::vector<controls::Form*> windows,
                         ports::Instance& instance,
                         ports::Application& application)
    : m_bass(bass)
    , m_settings(settings)
    , m_state(state)
    , m_wmain(wmain)
    , m_windows(std::move(windows))
    , m_instance(instance)
    , m_application(application)
{}

void ExitProgram::Run()
{
    if (std::exchange(m_running, true))
        return;
    for (controls::Form* window : m_windows)
        window->Hide();
    m_wmain.tmrBASS.Enabled = false;
    StopSound();
    if (m_wmain.Loaded)
        SaveWindow();
    m_instance.ReleaseInstance();
    m_application.Quit(0);
}

void ExitProgram::StopSound()
{
    if (m_bass.BASS_Free == nullptr)
        return; // the library was never loaded
    const ChannelQueries queries(m_bass);
    for (const DWORD channel : {m_state.CurrentChannel, m_state.NextChannel})
        if (queries.IsPlaying(channel))
            m_bass.BASS_ChannelStop(channel);
    m_bass.BASS_Stop();
    m_bass.BASS_Free();
}

void ExitProgram::SaveWindow()
{
    const bool minimized = m_wmain.State.Get() == controls::WindowState::Minimized;
    m_settings.WriteSetting(sections::RTM, keys::X, PlainNumber(m_wmain.Left));
    m_settings.WriteSetting(sections::RTM, keys::Y, PlainNumber(m_wmain.Top));
    m_settings.WriteSetting(sections::RTM, keys::State, minimized ? "Minimized" : "Normal");
}

} // namespace velmo
