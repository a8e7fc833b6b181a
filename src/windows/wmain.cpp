#include "wmain.h"

#include "ReadFont.h"

#include "core/CallIfSet.h"
#include "core/NumberText.h"
#include "core/SettingsKeys.h"
#include "core/TextRules.h"

#include <utility>

namespace velmo {

wmain::wmain(forms::wmain& form,
             forms::Playlist& playlist,
             const modBass& bass,
             modINI& settings,
             ports::Desktop& desktop,
             TransportState& state,
             Monitor& monitor,
             LoadedWithMainWindow modules)
    : m_form(form)
    , m_playlist(playlist)
    , m_settings(settings)
    , m_desktop(desktop)
    , m_state(state)
    , m_monitor(monitor)
    , m_modules(modules)
    , m_queries(bass)
    , m_volume(form, bass, settings)
    , m_position(form, bass, state, monitor)
{}

void wmain::Load(const MainWindowSteps& steps)
{
    CallIfSet(steps.ShapeAndStick);
    CallIfSet(steps.MarkMainWindow);
    m_modules.systray.Load(m_settings);
    m_form.AlwaysOnTop = IsTrueSetting(sections::Options, keys::AlwaysOnTop, "false");
    m_volume.Restore();
    m_position.LetGo();
    RestorePlace();
    m_state.MuteSavedVolume = 0;
    m_modules.spectrum.ReadSettings();
    m_state.TimeElapsedMode = IsTrueSetting(sections::RTM, keys::TimeMode, "True");
    ReadFont(m_settings, m_form, m_playlist);
    CallIfSet(steps.LoadPlaylist);
    m_modules.equalizer.Load();
    m_modules.curves.LoadDefaultEqualizer();
    m_modules.equalizer.ReadState();
    CallIfSet(steps.LoadListManager);
    m_modules.neighbours.Load();
    SetSongName(m_form, m_state, IdleTitle);
    m_form.lblTime.Caption = IdleTime;
    const bool minimized = EqualsIgnoringCase(
        m_settings.ReadSetting(sections::RTM, keys::State, "Normal"), "minimized");
    m_form.State = minimized ? controls::WindowState::Minimized : controls::WindowState::Normal;
    m_minimizedByButton = false;
    m_form.Loaded = true;
}

void wmain::imgMinimize_MouseUp(const controls::MouseEvent& event)
{
    if (event.button != controls::MouseButton::Left || !ReleasedInside(m_form.imgMinimize, event))
        return;
    m_minimizedByButton = true;
    m_playlist.Hide();
    m_form.State = controls::WindowState::Minimized;
}

void wmain::Form_Resize()
{
    if (m_form.State.Get() != controls::WindowState::Normal)
        return;
    RestorePlaylist();
    m_modules.neighbours.Follow();
}

void wmain::lblTime_MouseDown(const controls::MouseEvent& event)
{
    if (event.button == controls::MouseButton::Left)
        FlipTimeMode();
}

void wmain::FlipTimeMode()
{
    m_state.TimeElapsedMode = !m_state.TimeElapsedMode;
    m_settings.WriteSetting(
        sections::RTM, keys::TimeMode, m_state.TimeElapsedMode ? "True" : "False");
    if (m_queries.IsPlaying(m_state.CurrentChannel))
        m_monitor.ShowTimes();
}

/// Each of the two is taken by itself, and only if it lies on the desktop.
void wmain::RestorePlace()
{
    const double left = ParseNumber(m_settings.ReadSetting(sections::RTM, keys::X, "0"));
    const double top = ParseNumber(m_settings.ReadSetting(sections::RTM, keys::Y, "0"));
    const ports::Desktop::Size desktop = m_desktop.VirtualSize();
    if (left >= 0 && left <= desktop.width)
        m_form.Left = left;
    if (top >= 0 && top <= desktop.height)
        m_form.Top = top;
}

void wmain::RestorePlaylist()
{
    if (std::exchange(m_minimizedByButton, false)
        && IsTrueSetting(sections::RTM, keys::ShowPL, "true"))
        m_playlist.Show();
}

bool wmain::IsTrueSetting(const char* section, const char* key, const char* fallback)
{
    return IsTrue(m_settings.ReadSetting(section, key, fallback));
}

bool ReleasedInside(const controls::Control& control, const controls::MouseEvent& event)
{
    return event.x >= 0 && event.x <= control.Width && event.y >= 0 && event.y <= control.Height;
}

} // namespace velmo
