#pragma once

#include "controls/Form.h"
#include "controls/Menu.h"
#include "controls/Picture.h"

namespace velmo::forms {

/// The window that is never shown: the menus hang in it.
class frmResources final : public controls::Form
{
public:
    frmResources();

    controls::Picture STPBox; ///< is told what the mouse does at the icon in the tray

    // The main menu.
    controls::MenuEntry submnuAbout;
    controls::MenuEntry submnu_LineBreak1;
    controls::MenuEntry submnuPlayFile;
    controls::MenuEntry submnuOpenList;
    controls::MenuEntry submnuAddFiles;
    controls::MenuEntry submnuSaveList;
    controls::MenuEntry submnu_LineBreak2;
    controls::MenuEntry submnuComponents;
    controls::MenuEntry submnuShowEq;
    controls::MenuEntry submnuShowPlaylist;
    controls::MenuEntry submnuShowPlaylistManager;
    controls::MenuEntry submnuControlCenter;
    controls::MenuEntry submnuDjingOptions;
    controls::MenuEntry submnuSystemVolume;
    controls::MenuEntry submnuStreamInformation;
    controls::MenuEntry submnu_LineBreak3;
    controls::MenuEntry submnuAlwaysOnTop;
    controls::MenuEntry submnuShutDown;
    controls::MenuEntry submnuRestart;
    controls::MenuEntry submnuExit;

    // The menu of the playlist's rows.
    controls::MenuEntry submnuPlay;
    controls::MenuEntry submnuPlayRandom;
    controls::MenuEntry submnu_LineBreak4;
    controls::MenuEntry submnuFind;
    controls::MenuEntry submnu_LineBreak5;
    controls::MenuEntry submnuDeleteSelected;
    controls::MenuEntry submnuReloadtag;
    controls::MenuEntry submnuEditEntry;
    controls::MenuEntry submnuEntryInformation;

    // Time and spectrum; the volume.
    controls::MenuEntry submnuTimeMode;
    controls::MenuEntry submnuSpectrumMode;
    controls::MenuEntry submnuVolControl;

    // The menu of the icon in the tray.
    controls::MenuEntry STMin;
    controls::MenuEntry STMax;
    controls::MenuEntry submnu_LineBreak6;
    controls::MenuEntry STClose;

    // The menu of the list manager's rows.
    controls::MenuEntry subName; ///< the name of the list, as a heading
    controls::MenuEntry submnuOpenPlaylist;
    controls::MenuEntry submnu_LineBreak7;
    controls::MenuEntry submnuNewPlaylist;
    controls::MenuEntry submnuAddPlaylist;
    controls::MenuEntry submnuRemovePlaylist;
    controls::MenuEntry submnuRenamePlaylist;
    controls::MenuEntry submnu_LineBreak8;
    controls::MenuEntry submnuRefresh;

    controls::Menu Menu1;
    controls::Menu Menu2;
    controls::Menu Menu3;
    controls::Menu Menu4;
    controls::Menu Menu5;
    controls::Menu Menu6;
};

} // namespace velmo::forms
