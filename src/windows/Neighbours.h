#pragma once

#include "core/modINI.h"
#include "forms/Playlist.h"
#include "forms/fX.h"
#include "forms/frmListMGR.h"
#include "forms/frmResources.h"
#include "forms/wmain.h"

#include <functional>

namespace velmo {

/// The main window, its neighbours, and the menus that bear their check marks.
struct NeighbourForms
{
    forms::wmain& wmain;
    forms::Playlist& playlist;
    forms::fX& fX;
    forms::frmListMGR& frmListMGR;
    forms::frmResources& resources;
};

/// Shows and hides the windows around the main window and gives them their places: the playlist at
/// its right, the equalizer below it, the list manager below that. Whether a window is shown stands
/// in its form; its setting and its check mark follow. User-interface thread only.
class Neighbours
{
public:
    /// `checkGlueing` works out anew which windows move with the main window; called after places
    /// have been given out. May be empty.
    Neighbours(NeighbourForms forms, modINI& settings, std::function<void()> checkGlueing);

    /// At the main window's load, which has its place by then: shown or hidden as in the last run.
    void Load();

    /// The main window is back, or has another size: the neighbours take up the places of the load
    /// again. Not with "StickyWindows" off.
    void Follow();

    void TogglePlaylist();
    /// Hidden, the equalizer lets a manager that was glued below it move up to the main window.
    /// Shown again, it comes between the two.
    void ToggleEqualizer();
    void ToggleListManager();

    /// What the window's own close picture does.
    void HideEqualizer();
    void HideListManager();

    /// Setting and check mark of the playlist, without the window.
    void NotePlaylist(bool isShown);

private:
    void ShowEqualizer();
    void ShowListManager();
    void TakePlaces();
    void Note(const char* key, controls::MenuEntry& mark, bool isShown);
    bool IsWanted(const char* key);

    NeighbourForms m_forms;
    modINI& m_settings;
    std::function<void()> m_checkGlueing;
};

} // namespace velmo
