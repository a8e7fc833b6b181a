#pragma once

#include "core/modINI.h"
#include "forms/Playlist.h"
#include "forms/wmain.h"
#include "ports/Desktop.h"
#include "sound/ChannelQueries.h"
#include "sound/Monitor.h"
#include "sound/TransportState.h"

#include <functional>

namespace velmo {

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
          Monitor& monitor);

    /// Restores what the last run left: instance hooks first, then place, mode of the time display,
    /// fonts and state. `markMainWindow` makes this process findable for others.
    void Load(const std::function<void()>& markMainWindow);

    void imgMinimize_MouseUp(const controls::MouseEvent& event);
    void lblTime_MouseDown(const controls::MouseEvent& event);
    void imgPositionBar_MouseDown(const controls::MouseEvent& event);
    void imgPositionTicker_MouseDown(const controls::MouseEvent& event);
    void imgPositionTicker_MouseMove(const controls::MouseEvent& event);
    void imgPositionTicker_MouseUp(const controls::MouseEvent& event);

private:
    double Range() const;
    float LengthSeconds() const;
    void SeekToOffset(double offsetTwips);
    void RestorePlace();
    void ReadFont();

    forms::wmain& m_form;
    forms::Playlist& m_playlist;
    modINI& m_settings;
    ports::Desktop& m_desktop;
    TransportState& m_state;
    Monitor& m_monitor;
    ChannelQueries m_queries;
    bool m_positionDragging = false;
    std::int32_t m_positionDragStart = 0;
};

/// Whether the pointer was still over the control when the button was released.
bool ReleasedInside(const controls::Control& control, const controls::MouseEvent& event);

} // namespace velmo
