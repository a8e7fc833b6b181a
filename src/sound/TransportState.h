#pragma once

#include "bass.h"

#include "forms/wmain.h"

#include <cstdint>
#include <functional>
#include <string>

namespace velmo {

/// What the transport knows between two events. Whoever works on the sound works on these; there is
/// no player object. User-interface thread only.
struct TransportState
{
    /// Shown by time display, ticker and picture; 0 before the first opening and after one that
    /// failed. Keeps a dead handle after Stop: handles are never used twice, so that does no harm.
    DWORD CurrentChannel = 0;
    DWORD NextChannel = 0;         ///< opened ahead for an overlap, 0 if there is none
    std::string CurrentFile;       ///< the path that was last started
    std::string CurrentTitleText;  ///< decorated title of the last track that was started
    std::string WindowTitle;       ///< what `lblSongName` was last set to, before it began to run
    std::int32_t PlayIndex = 0;    ///< row that was chosen for `NextChannel`, from 1
    bool PlayStartedFlag = false;  ///< something has played in this process; never cleared
    bool AdvanceRequested = false; ///< the next press of Play comes from the monitor
    bool PausedFlag = false;       ///< from Pause to the resuming press
    std::string PausedTimeText;    ///< the text of `lblTime` at the moment of the pause
    bool TimeElapsedMode = true;   ///< `lblTime` counts up; else it counts down
    std::int32_t MuteSavedVolume = 0;

    /// Bound by the object graph: called whenever a channel has been told to play.
    std::function<void()> SoundStarts;
};

/// Title when nothing has been started.
constexpr const char* IdleTitle = "Velmo Player - Made to be heard!    ***  ";

/// `lblTime` when nothing plays.
constexpr const char* IdleTime = "00:00";

/// The decorated form of a track's title.
std::string DecoratedTitle(const std::string& title);

/// Sets the text of `lblSongName` and the title that the window has while it does not run.
void SetSongName(forms::wmain& window, TransportState& state, const std::string& text);

} // namespace velmo
