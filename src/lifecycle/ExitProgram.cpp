#include "ExitProgram.h"

#include "core/CallIfSet.h"
#include "core/SettingsKeys.h"
#include "core/TextRules.h"
#include "sound/ChannelQueries.h"

#include <utility>

namespace velmo {

ExitProgram::ExitProgram(EndingSteps& steps,
                         std::vector<controls::Form*> windows,
                         ports::Application& application)
    : m_steps(steps)
    , m_windows(std::move(windows))
    , m_application(application)
{}

void ExitProgram::Run()
{
    if (std::exchange(m_running, true))
        return;
    m_steps.Modules().status.UpdateYahooExit();
    for (controls::Form* window : m_windows)
        window->Hide();
    MuteIfSilent();
    m_steps.WriteVolume(VolumeText::Rounded);
    m_steps.StopMonitor();
    StopSound();
    m_steps.WritePlace();
    m_steps.SaveListAndEqualizer();
    WriteState();
    UndoSurroundings();
    m_steps.Modules().instance.ReleaseInstance();
    m_application.Quit(0);
}

/// The mute key's test, of which only the outcome for a silent output is left.
void ExitProgram::MuteIfSilent()
{
    const EndingModules& modules = m_steps.Modules();
    if (!m_steps.HasLibrary() || modules.bass.BASS_GetVolume() != 0
        || modules.state.MuteSavedVolume != 0)
        return;
    modules.bass.BASS_SetVolume(0);
    modules.state.MuteSavedVolume = 0;
}

void ExitProgram::StopSound()
{
    if (!m_steps.HasLibrary())
        return;
    const EndingModules& modules = m_steps.Modules();
    // Kept: the plugins go while channels are still open; those that they decode end with them.
    modules.bass.BASS_PluginFree(0);
    const ChannelQueries queries(modules.bass);
    for (const DWORD channel : {modules.state.CurrentChannel, modules.state.NextChannel})
        if (queries.IsPlaying(channel))
            modules.bass.BASS_ChannelStop(channel);
    modules.bass.BASS_Stop();
    m_steps.FreeLibrary();
}

void ExitProgram::WriteState()
{
    if (!m_steps.IsLoaded())
        return;
    const EndingModules& modules = m_steps.Modules();
    const bool minimized = modules.wmain.State.Get() == controls::WindowState::Minimized;
    modules.settings.WriteSetting(sections::RTM, keys::State, minimized ? "Minimized" : "Normal");
}

void ExitProgram::UndoSurroundings()
{
    modINI& settings = m_steps.Modules().settings;
    const EndingCalls& calls = m_steps.Calls();
    if (IsFalse(settings.ReadSetting(sections::Options, keys::AllowMultipleInstances, "false")))
        CallIfSet(calls.DetachHandOver);
    if (IsTrue(settings.ReadSetting(sections::Options, keys::AvoidStandBy, "true")))
        CallIfSet(calls.EndStandByGuard);
    CallIfSet(calls.RemoveTrayIcon);
    CallIfSet(calls.GiveBackSystemMenu);
    CallIfSet(calls.ReleaseRegions);
}

} // namespace velmo
