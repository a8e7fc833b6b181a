#pragma once

#include "bass/modBass.h"
#include "core/modINI.h"
#include "equalizer/EqualizerFiles.h"
#include "forms/Playlist.h"
#include "forms/wmain.h"
#include "playlist/modPlaylist.h"
#include "ports/Instance.h"
#include "sound/StatusChanger.h"
#include "sound/TransportState.h"

#include <functional>
#include <vector>

namespace velmo {

/// What the three endings work on.
struct EndingModules
{
    const modBass& bass;
    modINI& settings;
    TransportState& state;
    forms::wmain& wmain;
    forms::Playlist& playlist;
    modPlaylist& list;
    StatusChanger& status;
    EqualizerFiles& curves;
    ports::Instance& instance;
};

/// What the endings undo in modules that they don't know. Bound by the object graph; what is not
/// bound has nothing to undo.
struct EndingCalls
{
    std::function<bool()> IsListOpen; ///< whether the rows are the user's list yet
    std::function<void()> DetachHandOver;
    std::function<void()> EndStandByGuard;
    std::function<void()> RemoveTrayIcon; ///< if it is there
    std::function<void()> GiveBackSystemMenu;
    std::function<void()> ReleaseRegions;
    std::function<void()> RemoveAllWindows; ///< from those that stick together
};

enum class VolumeText
{
    Rounded, ///< a whole number
    AsIs     ///< may hold a fraction
};

/// The steps that the exit, the restart and the short close share. None of them fails: a setting or
/// a list that can't be written stays as it was. User-interface thread only.
class EndingSteps
{
public:
    EndingSteps(EndingModules modules, EndingCalls calls);

    const EndingModules& Modules() const { return m_modules; }
    const EndingCalls& Calls() const { return m_calls; }

    /// Distance from the start of the volume bar to the middle of its ticker, in twips.
    void WriteVolume(VolumeText text);
    void StopMonitor();
    /// Frees the library, if it was ever loaded.
    void FreeLibrary() const;
    /// The main window's place, in twips.
    void WritePlace();
    /// Not while a start has not filled the list yet: that would save an empty one.
    void SaveList();
    void SaveListAndEqualizer();

    /// Whether the main window's load has run. Before that what the controls show is nobody's wish,
    /// and nothing of it is saved.
    bool IsLoaded() const;
    bool HasLibrary() const;

private:
    EndingModules m_modules;
    EndingCalls m_calls;
};

} // namespace velmo
