#include "frmResources.h"

namespace velmo::forms {

frmResources::frmResources()
    : Form("frmResources", "", 0, 0, controls::BorderStyle::None)
    , STPBox(*this, "STPBox", {0, 0, 240, 240})
    , submnuAbout("submnuAbout", "&Velmo Player..")
    , submnu_LineBreak1("submnu_LineBreak1", "-")
    , submnuPlayFile("submnuPlayFile", "Play file..")
    , submnuOpenList("submnuOpenList", "Open playlist..")
    , submnuAddFiles("submnuAddFiles", "Add file(s)")
    , submnuSaveList("submnuSaveList", "Save Playlist")
    , submnu_LineBreak2("submnu_LineBreak2", "-")
    , submnuComponents("submnuComponents", "Components")
    , submnuShowEq("submnuShowEq", "Show Equalizer")
    , submnuShowPlaylist("submnuShowPlaylist", "Show Playlist")
    , submnuShowPlaylistManager("submnuShowPlaylistManager", "Show Playlist Manager")
    , submnuControlCenter("submnuControlCenter", "Control Center")
    , submnuDjingOptions("submnuDjingOptions", "Dj-ing options")
    , submnuSystemVolume("submnuSystemVolume", "System Volume")
    , submnuStreamInformation("submnuStreamInformation", "Stream Information")
    , submnu_LineBreak3("submnu_LineBreak3", "-")
    , submnuAlwaysOnTop("submnuAlwaysOnTop", "Always on &top")
    , submnuShutDown("submnuShutDown", "ShutDown system")
    , submnuRestart("submnuRestart", "&Restart")
    , submnuExit("submnuExit", "E&xit")
    , submnuPlay("submnuPlay", "Play")
    , submnuPlayRandom("submnuPlayRandom", "Play random")
    , submnu_LineBreak4("submnu_LineBreak4", "-")
    , submnuFind("submnuFind", "Find..")
    , submnu_LineBreak5("submnu_LineBreak5", "-")
    , submnuDeleteSelected("submnuDeleteSelected", "Delete selected")
    , submnuReloadtag("submnuReloadtag", "Reload tag information")
    , submnuEditEntry("submnuEditEntry", "Edit entry name")
    , submnuEntryInformation("submnuEntryInformation", "Entry information")
    , submnuTimeMode("submnuTimeMode", "Time mode")
    , submnuSpectrumMode("submnuSpectrumMode", "Spectrum mode")
    , submnuVolControl("submnuVolControl", "Volume Control")
    , STMin("STMin", "Minimize")
    , STMax("STMax", "Restore")
    , submnu_LineBreak6("submnu_LineBreak6", "-")
    , STClose("STClose", "Close")
    , subName("subName", "-(name)-")
    , submnuOpenPlaylist("submnuOpenPlaylist", "Open playlist")
    , submnu_LineBreak7("submnu_LineBreak7", "-")
    , submnuNewPlaylist("submnuNewPlaylist", "Clone playlist")
    , submnuAddPlaylist("submnuAddPlaylist", "Add playlist")
    , submnuRemovePlaylist("submnuRemovePlaylist", "Remove playlist")
    , submnuRenamePlaylist("submnuRenamePlaylist", "Rename playlist")
    , submnu_LineBreak8("submnu_LineBreak8", "-")
    , submnuRefresh("submnuRefresh", "Refresh")
    , Menu1("Menu1",
            {&submnuAbout,
             &submnu_LineBreak1,
             &submnuPlayFile,
             &submnuOpenList,
             &submnuAddFiles,
             &submnuSaveList,
             &submnu_LineBreak2,
             &submnuComponents,
             &submnu_LineBreak3,
             &submnuAlwaysOnTop,
             &submnuShutDown,
             &submnuRestart,
             &submnuExit})
    , Menu2("Menu2",
            {&submnuPlay,
             &submnuPlayRandom,
             &submnu_LineBreak4,
             &submnuFind,
             &submnu_LineBreak5,
             &submnuDeleteSelected,
             &submnuReloadtag,
             &submnuEditEntry,
             &submnuEntryInformation})
    , Menu3("Menu3", {&submnuTimeMode, &submnuSpectrumMode})
    , Menu4("Menu4", {&submnuVolControl})
    , Menu5("Menu5", {&STMin, &STMax, &submnu_LineBreak6, &STClose})
    , Menu6("Menu6",
            {&subName,
             &submnuOpenPlaylist,
             &submnu_LineBreak7,
             &submnuNewPlaylist,
             &submnuAddPlaylist,
             &submnuRemovePlaylist,
             &submnuRenamePlaylist,
             &submnu_LineBreak8,
             &submnuRefresh})
{
    submnuComponents.Children = {&submnuShowEq,
                                 &submnuShowPlaylist,
                                 &submnuShowPlaylistManager,
                                 &submnuControlCenter,
                                 &submnuDjingOptions,
                                 &submnuSystemVolume,
                                 &submnuStreamInformation};
}

} // namespace velmo::forms
