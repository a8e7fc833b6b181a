#pragma once

#include "VolumeSlider.h"

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
};

/// The main window's handlers: its load, the position slider and the time display. User-interface
/// thread only.
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

    /// Restores what the last run left: instance hooks first, then volume, place, picture, mode of
    /// the time display, fonts, equalizer, neighbours and state. `markMainWindow` makes this
    /// process findable for others.
    void Load(const std::function<void()>& markMainWindow);

    /// Hides the playlist with the window, which ends an automatic run at the track's end.
    void imgMinimize_MouseUp(const controls::MouseEvent& event);
    /// Back from minimised by its own button, the window has its playlist come back, too.
    void RestorePlaylist();
    void lblTime_MouseDown(const controls::MouseEvent& event);
    void imgPositionBar_MouseDown(const controls::MouseEvent& event);
    void imgPositionTicker_MouseDown(const controls::MouseEvent& event);
    void imgPositionTicker_MouseMove(const controls::MouseEvent& event);
    void imgPositionTicker_MouseUp(const controls::MouseEvent& event);

    VolumeSlider& Volume() { return m_volume; }

private:
    double Range() const;
    float LengthSeconds() const;
    void SeekToOffset(double offsetTwips);
    void RestorePlace();
    bool IsPlaylistWanted();
    void ReadFont();

    forms::wmain& m_form;
    forms::Playlist& m_playlist;
    modINI& m_settings;
    ports::Desktop& m_desktop;
    TransportState& m_state;
    Monitor& m_monitor;
    LoadedWithMainWindow m_modules;
    ChannelQueries m_queries;
    VolumeSlider m_volume;
    bool m_minimizedByButton = false;
    bool m_positionDragging = false;
    std::int32_t m_positionDragStart = 0;
};

/// Whether the pointer was still over the control when the button was released.
bool ReleasedInside(const controls::Control& control, const controls::MouseEvent& event);

} // namespace velmo
