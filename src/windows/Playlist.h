#pragma once

#include "Neighbours.h"
#include "PlaylistButtons.h"
#include "PlaylistCommands.h"
#include "PlaylistScrolling.h"
#include "ucScrollBar.h"

#include "core/modINI.h"
#include "forms/Playlist.h"
#include "forms/frmResources.h"
#include "playlist/Adding.h"
#include "ports/Files.h"

#include <string>

namespace velmo {

/// The forms that the playlist's window works on.
struct PlaylistForms
{
    forms::Playlist& playlist;
    forms::wmain& wmain;
    forms::frmResources& resources;
};

/// The modules behind the playlist's window.
struct PlaylistModules
{
    Neighbours& neighbours;
    Adding& adding;
    PlaylistButtonModules buttons;
    PlaylistCommandModules commands;
};

/// The playlist's window: view and controller of the list. It may be hidden and shown at any time
/// without the list changing. User-interface thread only.
class Playlist final
{
public:
    /// Takes the slots of the form, but for those of its timers, and the entries of `Menu2`.
    Playlist(PlaylistForms forms,
             PlaylistModules modules,
             modINI& settings,
             ports::Files& files,
             std::string applicationDirectory);
    Playlist(const Playlist&) = delete;
    Playlist& operator=(const Playlist&) = delete;
    ~Playlist() = default;

    /// Before the window is first shown in a run of the core; its outline and its place among the
    /// windows that stick together it has by then.
    void Load();
    /// Hides the window for good, as its close image does.
    void Close();

private:
    void BindWindow();
    void BindList();
    void BindScrollBar();
    void maincapclose_MouseDown();
    void maincapclose_MouseUp();
    void pl_KeyDown(int keyCode);
    void pl_MouseUp(const controls::MouseEvent& event);
    void Leave();

    PlaylistForms m_forms;
    forms::Playlist& m_form;
    modPlaylist& m_list;
    Neighbours& m_neighbours;
    Adding& m_adding;
    modINI& m_settings;
    ports::Files& m_files;
    std::string m_applicationDirectory;
    PlaylistButtons m_buttons;
    PlaylistCommands m_commands;
    PlaylistScrolling m_scrolling;
    ucScrollBar m_scBar;
};

} // namespace velmo
