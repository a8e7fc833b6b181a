#pragma once

#include "PlayerApplication.h"
#include "Process.h"

#include "bass/TagLibrary.h"
#include "bass/modBass.h"
#include "controls/TimerBinding.h"
#include "forms/ErrMGR.h"
#include "forms/Playlist.h"
#include "forms/frmSplash.h"
#include "forms/wmain.h"
#include "lifecycle/BringUp.h"
#include "lifecycle/ExitProgram.h"
#include "lifecycle/StartCore.h"
#include "linux/DlLibraries.h"
#include "playlist/Adding.h"
#include "playlist/TitleReader.h"
#include "playlist/modTags.h"
#include "qt/FormView.h"
#include "qt/QtDesktop.h"
#include "qt/QtTimers.h"
#include "qt/SignalWatcher.h"
#include "sound/Monitor.h"
#include "sound/TransportState.h"
#include "sound/modBassFunctions.h"
#include "windows/TitleScroller.h"
#include "windows/wmain.h"

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

    /// Shows the splash window or starts at once.
    void Start();

private:
    void BindEvents();
    void* CreateMainWindow();
    void MarkMainWindow();
    void ActivateMainWindow(const std::string& activationToken);

    Process& m_process;
    PlayerApplication m_application;
    DlLibraries m_libraries;
    qt::QtTimers m_timers;
    qt::QtDesktop m_desktop;

    forms::wmain m_wmain;
    forms::Playlist m_playlist;
    forms::ErrMGR m_errMGR;
    forms::frmSplash m_splash;

    // The table is filled by the start. The engine stays mapped to the end of the process.
    modBass m_bass;
    TagLibrary m_tagLibrary;
    TransportState m_transport;
    modTags m_tags;
    Adding m_adding;
    modBassFunctions m_tracks;
    Monitor m_monitor;
    TitleReader m_titleReader;
    wmain m_mainWindow;
    TitleScroller m_titleScroller;
    StartCore m_startCore;
    BringUp m_bringUp;
    ExitProgram m_exitProgram;

    qt::FormView m_wmainView;
    qt::FormView m_errMGRView;
    qt::FormView m_splashView;
    controls::FormTimers m_wmainTimers;
    controls::FormTimers m_playlistTimers;
    controls::FormTimers m_splashTimers;
    qt::SignalWatcher m_signals;
};

} // namespace velmo
