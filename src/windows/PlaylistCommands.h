#pragma once

#include "core/modINI.h"
#include "forms/Playlist.h"
#include "forms/frmResources.h"
#include "forms/wmain.h"
#include "playlist/modPlaylist.h"
#include "playlist/modTags.h"
#include "sound/Transport.h"
#include "sound/TransportKeys.h"
#include "sound/TransportState.h"

#include <string>

namespace velmo {

/// What the commands of the playlist work with.
struct PlaylistCommandModules
{
    modPlaylist& list;
    modTags& tags;
    Transport& transport;
    TransportKeys& keys;
    TransportState& state;
};

/// What clicks, letters and the menu of the rows do with the entries. User-interface thread only.
/// A handler has no trap unless it says so: without a selected row it ends where it stands.
class PlaylistCommands final
{
public:
    PlaylistCommands(forms::Playlist& form,
                     forms::wmain& wmain,
                     modINI& settings,
                     PlaylistCommandModules modules);

    /// Takes the entries of `Menu2`. Those whose windows are not there stay unset.
    void BindMenu(forms::frmResources& menus);

    /// Plays the selected entry unless a single click does; what fails is passed over.
    void pl_DblClick();
    /// The left button, if a single click plays, plays the selected entry; what fails is passed
    /// over.
    void pl_MouseUp(const controls::MouseEvent& event);
    /// The common table of letters, but "n" and "b" go by the rows alone, whatever is seen of the
    /// window.
    void pl_KeyPress(char32_t character);

    void submnuPlay_Click();
    /// Of the row with the focus. Its length stays, and nothing is saved.
    void submnuReloadtag_Click();

private:
    std::string SingleClickSetting();
    void Next();
    void Back();
    void PlayRow(std::size_t row);

    forms::Playlist& m_form;
    forms::wmain& m_wmain;
    modINI& m_settings;
    PlaylistCommandModules m_modules;
};

} // namespace velmo
