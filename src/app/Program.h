#pragma once

#include "NoAssociations.h"
#include "PlayerApplication.h"
#include "Process.h"

#include "bass/PluginTable.h"
#include "bass/TagLibrary.h"
#include "bass/modBass.h"
#include "controls/TimerBinding.h"
#include "equalizer/EqualizerFiles.h"
#include "equalizer/fX.h"
#include "equalizer/modFXFunctions.h"
#include "forms/ErrMGR.h"
#include "forms/Playlist.h"
#include "forms/fX.h"
#include "forms/frmAddLocation.h"
#include "forms/frmListMGR.h"
#include "forms/frmResources.h"
#include "forms/frmSplash.h"
#include "forms/wmain.h"
#include "integration/ShutdownStatus.h"
#include "lifecycle/BringUp.h"
#include "lifecycle/ExitProgram.h"
#include "lifecycle/RestartCore.h"
#include "lifecycle/STClose.h"
#include "lifecycle/StartCore.h"
#include "linux/DlLibraries.h"
#include "linux/LinuxMixerProgram.h"
#include "linux/LocaleCollation.h"
#include "linux/SeededRandom.h"
#include "linux/SystemClock.h"
#include "listmanager/frmListMGR.h"
#include "playlist/Adding.h"
#include "playlist/AddingDialogs.h"
#include "playlist/EntryMaker.h"
#include "playlist/ListDialogs.h"
#include "playlist/ListStore.h"
#include "playlist/MediaFilter.h"
#include "playlist/Ordering.h"
#include "playlist/TitleReader.h"
#include "playlist/frmAddLocation.h"
#include "playlist/modPlaylist.h"
#include "playlist/modTags.h"
#include "qt/ColourScheme.h"
#include "qt/FormView.h"
#include "qt/MenuView.h"
#include "qt/QtDesktop.h"
#include "qt/QtScreens.h"
#include "qt/QtTimers.h"
#include "qt/QtTray.h"
#include "qt/SignalWatcher.h"
#include "sound/DjMethods.h"
#include "sound/Monitor.h"
#include "sound/ProxySettings.h"
#include "sound/Transport.h"
#include "sound/TransportKeys.h"
#include "sound/TransportState.h"
#include "sound/modBassFunctions.h"
#include "visualisation/Spectrum.h"
#include "windows/MainWindowEvents.h"
#include "windows/Menus.h"
#include "windows/Neighbours.h"
#include "windows/Playlist.h"
#include "windows/StickyWindows.h"
#include "windows/TitleScroller.h"
#include "windows/modSystray.h"
#include "windows/ucScrollBar.h"
#include "windows/wmain.h"

#include <array>

namespace velmo {

/// The player's one object graph: ports, forms, modules, views. What is declared first is used by
/// what follows, and ends last. Made on the user-interface thread, once there is a window system.
class Program
{
public:
    explicit Program(Process& process);
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;
    ~Program() = default;

    /// Has the event loop show the splash window, or start at once.
    void Start();

private:
    // Each in a file of its own.
    void BindCalls();
    void BindMainWindow();
    void BindMenus();
    void BindPlaylist();
    void BindSmallWindows();
    void BindTray();

    StartModules StartedModules();
    StartCalls CallsOfStart();
    MainWindowSteps StepsOfMainWindow();
    EndingCalls CallsOfEndings();
    void* CreateMainWindow();
    void MarkMainWindow();
    void ActivateMainWindow(const std::string& activationToken);

    Process& m_process;
    PlayerApplication m_application;
    DlLibraries m_libraries;
    qt::QtTimers m_timers;
    qt::QtDesktop m_desktop;
    qt::ColourScheme m_colours;
    qt::QtScreens m_screens;
    NoAssociations m_associations;
    NoStatusChanger m_status;
    SystemClock m_clock;
    SeededRandom m_random;
    LocaleCollation m_collation;
    LinuxMixerProgram m_mixerProgram;

    forms::wmain m_wmain;
    forms::Playlist m_playlist;
    forms::fX m_fX;
    forms::frmListMGR m_frmListMGR;
    forms::frmAddLocation m_frmAddLocation;
    forms::ErrMGR m_errMGR;
    forms::frmSplash m_splash;
    forms::frmResources m_resources;
    qt::QtTray m_tray;

    // The table is filled by the start. The engine stays mapped to the end of the process.
    modBass m_bass;
    PluginTable m_plugins;
    ProxySettings m_proxy;
    ShutdownState m_shutdown;
    TagLibrary m_tagLibrary;
    TransportState m_transport;
    modTags m_tags;
    modPlaylist m_list;
    Ordering m_ordering;
    EntryMaker m_entries;
    MediaFilter m_mediaFilter;
    Adding m_adding;
    ListStore m_store;
    ListDialogs m_listDialogs;
    modFXFunctions m_equalizer;
    EqualizerFiles m_curves;
    fX m_equalizerWindow;
    modBassFunctions m_tracks;
    RandomRow m_randomRow;
    DjMethods m_dj;
    Transport m_controls;
    KeyCalls m_keyCalls;
    TransportKeys m_keys;
    Monitor m_monitor;
    AddingDialogs m_addingDialogs;
    frmAddLocation m_addLocation;
    frmListMGR m_listManager;
    TitleReader m_titleReader;
    Spectrum m_spectrum;
    modSystray m_systray;
    StickyWindows m_sticky;
    Neighbours m_neighbours;
    Playlist m_playlistWindow;
    ucScrollBar m_scBarMgr;
    wmain m_mainWindow;
    TitleScroller m_titleScroller;
    MainWindowEvents m_mainWindowEvents;
    Menus m_menus;
    StartCore m_startCore;
    BringUp m_bringUp;
    EndingSteps m_endingSteps;
    ExitProgram m_exitProgram;
    RestartCore m_restartCore;
    STClose m_stClose;

    std::array<qt::MenuView, 6> m_menuViews;
    qt::FormView m_wmainView;
    qt::FormView m_playlistView;
    qt::FormView m_fXView;
    qt::FormView m_frmListMGRView;
    qt::FormView m_errMGRView;
    qt::FormView m_addLocationView;
    qt::FormView m_splashView;
    controls::FormTimers m_wmainTimers;
    controls::FormTimers m_playlistTimers;
    controls::FormTimers m_fXTimers;
    controls::FormTimers m_frmListMGRTimers;
    controls::FormTimers m_splashTimers;
    qt::SignalWatcher m_signals;
    bool m_takesHandOvers = false;
};

} // namespace velmo
