#pragma once

#include "Neighbours.h"
#include "PositionSlider.h"
#include "VolumeSlider.h"
#include "modSystray.h"

#include "core/modINI.h"
#include "equalizer/EqualizerFiles.h"
#include "equalizer/fX.h"
#include "forms/Playlist.h"
#include "forms/wmain.h"
#include "ports/Desktop.h"
#include "sound/ChannelQueries.h"
#include "sound/Monitor.h"
#include "sound/TransportState.h"
#include "visualisation/Spectrum.h"

#include <functional>

namespace velmo {

/// The modules that the main window's load calls.
struct LoadedWithMainWindow
{
    Spectrum& spectrum;
    fX& equalizer;
    EqualizerFiles& curves;
    Neighbours& neighbours;
    modSystray& systray;
};

/// Steps of the main window's load that lie above it. A step that is not bound is left out.
struct MainWindowSteps
{
    /// Gives the window the outline of its picture; others stick to it and move with it from now
    /// on.
    std::function<void()> ShapeAndStick = {};
    /// Makes this process findable for others.
    std::function<void()> MarkMainWindow = {};
    std::function<void()> LoadPlaylist = {};
    std::function<void()> LoadListManager = {};
};

/// The main window's handlers: its load, its buttons of the frame and the mode of its time display.
/// User-interface thread only.
class wmain
{
public:
    wmain(forms::wmain& form,
          forms::Playlist& playlist,
          const modBass& bass,
          modINI& settings,
          ports::Desktop& desktop,
          TransportState& state,
          Monitor& monitor,
          LoadedWithMainWindow modules);

    /// Restores what the last run left, in the order of the steps' list.
    void Load(const MainWindowSteps& steps);

    /// Hides the playlist with the window, which ends an automatic run at the track's end.
    void imgMinimize_MouseUp(const controls::MouseEvent& event);
    /// Back from minimised by its own button, the window has its playlist come back, too; and all
    /// neighbours take up their places.
    void Form_Resize();
    void lblTime_MouseDown(const controls::MouseEvent& event);
    /// Counts up or down, and keeps that.
    void FlipTimeMode();

    VolumeSlider& Volume() { return m_volume; }
    PositionSlider& Position() { return m_position; }

private:
    void RestorePlace();
    void RestorePlaylist();
    bool IsTrueSetting(const char* section, const char* key, const char* fallback);

    forms::wmain& m_form;
    forms::Playlist& m_playlist;
    modINI& m_settings;
    ports::Desktop& m_desktop;
    TransportState& m_state;
    Monitor& m_monitor;
    LoadedWithMainWindow m_modules;
    ChannelQueries m_queries;
    VolumeSlider m_volume;
    PositionSlider m_position;
    bool m_minimizedByButton = false;
};

/// Whether the pointer was still over the control when the button was released.
bool ReleasedInside(const controls::Control& control, const controls::MouseEvent& event);

} // namespace velmo
