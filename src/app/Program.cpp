#include "Program.h"

#include "controls/EventEntry.h"
#include "core/SettingsKeys.h"
#include "core/TextRules.h"
#include "lifecycle/HandOver.h"

#include <QByteArray>

#include <initializer_list>

namespace velmo {

Program::Program(Process& process)
    : m_process(process)
    , m_application(process)
    , m_proxy(m_bass, process.settings)
    , m_tagLibrary(m_libraries, process.directories.program + TagLibraryFileName)
    , m_tags(m_bass, m_tagLibrary, process.files, process.directories.application)
    , m_list(m_playlist, process.settings, process.files, process.directories.application)
    , m_ordering(m_list,
                 m_playlist,
                 {
                     m_collation, m_random, m_clock
})
    , m_entries(m_playlist, m_tags)
    , m_mediaFilter(m_plugins)
    , m_adding({m_list, m_entries, m_mediaFilter, m_ordering},
               m_playlist,
               process.settings,
               process.files)
    , m_store(process.files, process.directories.application)
    , m_listDialogs(m_list,
                    {m_playlist, m_frmListMGR},
                    m_ordering,
                    m_store,
                    process.settings,
                    process.files,
                    process.dialogs)
    , m_equalizer(m_bass, m_fX)
    , m_curves(m_fX,
               m_equalizer,
               process.settings,
               process.files,
               process.dialogs,
               process.directories.application)
    , m_equalizerWindow(m_fX, m_equalizer, m_curves, process.settings)
    , m_tracks(m_bass,
               process.settings,
               process.files,
               m_tags,
               m_equalizer,
               m_transport,
               {m_wmain, m_playlist, m_errMGR},
               {m_list, m_status})
    , m_randomRow(m_random, m_clock)
    , m_dj(m_bass,
           process.settings,
           m_transport,
           {m_wmain, m_playlist, m_errMGR},
           m_list,
           m_tracks,
           m_randomRow)
    , m_controls(m_bass,
                 process.settings,
                 process.files,
                 process.dialogs,
                 m_transport,
                 {m_wmain, m_playlist, m_errMGR},
                 {m_list, m_status},
                 m_mediaFilter,
                 m_tracks,
                 m_dj,
                 m_randomRow)
    , m_keys(m_controls, m_mixerProgram, m_keyCalls)
    , m_monitor(m_bass,
                process.settings,
                m_transport,
                {m_wmain, m_playlist, m_errMGR},
                m_tracks,
                m_dj,
                m_controls)
    , m_addingDialogs({m_list, m_entries, m_mediaFilter, m_ordering},
                      m_playlist,
                      m_tracks,
                      process.settings,
                      process.files,
                      process.dialogs)
    , m_addLocation(m_frmAddLocation, m_playlist, process.settings)
    , m_listManager({m_frmListMGR, m_playlist, m_resources},
                    {m_list,
                     m_adding,
                     m_store,
                     m_tags,
                     process.settings,
                     m_collation,
                     process.files,
                     process.dialogs})
    , m_titleReader(m_list,
                    m_playlist,
                    m_tags,
                    m_ordering,
                    m_tracks,
                    process.settings,
                    process.files,
                    PathOfCommandLine(process.commandLine, process.files))
    , m_spectrum(m_bass, process.settings, m_wmain, m_transport)
    , m_systray(m_tray, m_wmain, m_resources)
    , m_sticky(m_screens)
    , m_neighbours({m_wmain, m_playlist, m_fX, m_frmListMGR, m_resources},
                   process.settings,
                   [this] { m_sticky.CheckGlueing(); })
    , m_playlistWindow(
          {m_playlist, m_wmain, m_resources},
          {.neighbours = m_neighbours,
           .adding = m_adding,
           .buttons = {m_list, m_ordering, m_addingDialogs, m_listDialogs, m_addLocation},
           .commands = {m_list, m_tags, m_controls, m_keys, m_transport}},
          process.settings,
          process.files,
          process.directories.application)
    , m_scBarMgr(m_frmListMGR.scBarMgr)
    , m_mainWindow(m_wmain,
                   m_playlist,
                   m_bass,
                   process.settings,
                   m_desktop,
                   m_transport,
                   m_monitor,
                   {m_spectrum, m_equalizerWindow, m_curves, m_neighbours, m_systray})
    , m_titleScroller(m_wmain, process.settings, m_transport)
    , m_mainWindowEvents({m_wmain,
                          m_resources,
                          m_mainWindow,
                          m_bass,
                          m_transport,
                          m_controls,
                          m_neighbours,
                          m_spectrum,
                          m_mixerProgram,
                          m_keyCalls})
    , m_menus({m_resources,
               m_wmain,
               process.settings,
               m_mainWindow,
               m_neighbours,
               m_spectrum,
               m_controls,
               m_mixerProgram,
               m_keyCalls},
              {&m_wmain, &m_playlist, &m_fX, &m_frmListMGR, &m_frmAddLocation, &m_errMGR})
    , m_startCore({m_application, process.files, m_libraries, process.dialogs, m_associations},
                  StartedModules(),
                  CallsOfStart())
    , m_bringUp(m_splash,
                m_wmain,
                {&m_playlist, &m_fX, &m_frmListMGR},
                m_startCore,
                process.settings,
                m_application)
    , m_endingSteps({m_bass,
                     process.settings,
                     m_transport,
                     m_wmain,
                     m_playlist,
                     m_list,
                     m_status,
                     m_curves,
                     process.instance},
                    CallsOfEndings())
    , m_exitProgram(
          m_endingSteps,
          {&m_wmain, &m_playlist, &m_fX, &m_frmListMGR, &m_frmAddLocation, &m_errMGR, &m_splash},
          m_application)
    , m_restartCore(m_endingSteps,
                    m_startCore,
                    {&m_fX, &m_frmListMGR, &m_frmAddLocation, &m_errMGR},
                    m_application)
    , m_stClose(m_endingSteps, m_application)
    , m_menuViews{qt::MenuView(m_resources.Menu1),
                  qt::MenuView(m_resources.Menu2),
                  qt::MenuView(m_resources.Menu3),
                  qt::MenuView(m_resources.Menu4),
                  qt::MenuView(m_resources.Menu5),
                  qt::MenuView(m_resources.Menu6)}
    , m_wmainView(m_wmain)
    , m_playlistView(m_playlist)
    , m_fXView(m_fX)
    , m_frmListMGRView(m_frmListMGR)
    , m_errMGRView(m_errMGR)
    , m_addLocationView(m_frmAddLocation)
    , m_splashView(m_splash)
    , m_wmainTimers(m_wmain, m_timers)
    , m_playlistTimers(m_playlist, m_timers)
    , m_fXTimers(m_fX, m_timers)
    , m_frmListMGRTimers(m_frmListMGR, m_timers)
    , m_splashTimers(m_splash, m_timers)
    , m_signals([this] { m_exitProgram.Run(); })
{
    for (controls::Form* owned : std::initializer_list<controls::Form*>{
             &m_playlist, &m_fX, &m_frmListMGR, &m_frmAddLocation, &m_errMGR})
        owned->Owner = &m_wmain;
    BindCalls();
    BindMainWindow();
    BindMenus();
    BindPlaylist();
    BindSmallWindows();
    BindTray();
    EnableBoundEntries(m_resources);
}

void Program::Start()
{
    // Within the loop: what ends the program during a box of the start ends the loop for good.
    m_application.Post([this] { m_bringUp.Run(); });
    m_application.Post([this] { m_colours.Follow(); });
}

StartModules Program::StartedModules()
{
    return {.settings = m_process.settings,
            .bass = m_bass,
            .plugins = m_plugins,
            .proxy = m_proxy,
            .transport = m_transport,
            .systray = m_systray,
            .shutdown = m_shutdown,
            .resources = m_resources,
            .adding = m_adding};
}

StartCalls Program::CallsOfStart()
{
    return {.createMainWindow = [this] { return CreateMainWindow(); },
            .disableEqualizer = [this] { m_fX.Enabled = false; },
            .buildPalette = [this] { m_spectrum.BuildHeaderAndPalette(); }};
}

EndingCalls Program::CallsOfEndings()
{
    return {.IsListOpen = [this] { return m_startCore.IsListOpen(); },
            .DetachHandOver = [this] { m_takesHandOvers = false; },
            .EndStandByGuard = {},
            .RemoveTrayIcon = [this] { m_systray.RemoveTrayIcon(); },
            .GiveBackSystemMenu = {},
            .ReleaseRegions = [this] { m_sticky.ReleaseRegions(); },
            .RemoveAllWindows = [this] { m_sticky.RemoveAll(); }};
}

void* Program::CreateMainWindow()
{
    m_fX.Enabled = true; // a restart may have found the equalizer that an earlier start missed
    m_mainWindow.Load(StepsOfMainWindow());
    m_sticky.BringBack();
    m_screens.Changed = [this] { m_sticky.BringBack(); };
    // The engine takes a window's address and has no use for it: sound here belongs to no window.
    return nullptr;
}

MainWindowSteps Program::StepsOfMainWindow()
{
    return {.ShapeAndStick = [this] { m_sticky.Load(m_wmain); },
            .MarkMainWindow = [this] { MarkMainWindow(); },
            .LoadPlaylist =
                [this] {
                    m_sticky.Load(m_playlist);
                    m_playlistWindow.Load();
                },
            .LoadListManager = [this] { m_listManager.Load(); }};
}

void Program::MarkMainWindow()
{
    ports::InstanceEvents events{
        .handOver = {},
        .isVisible = [this] { return m_wmain.Visible.Get(); },
        .activate = [this](const std::string& token) { ActivateMainWindow(token); },
    };
    const std::string allowsMany =
        m_process.settings.ReadSetting(sections::Options, keys::AllowMultipleInstances, "false");
    m_takesHandOvers = IsFalse(allowsMany);
    if (m_takesHandOvers)
        events.handOver = [this](const ports::HandOverRecord& record) {
            if (!m_takesHandOvers)
                return;
            m_startCore.OpenList();
            ReceiveHandOver(record, m_process.files, m_adding);
        };
    m_process.instance.MarkMainWindow(std::move(events));
}

void Program::ActivateMainWindow(const std::string& activationToken)
{
    // The toolkit takes it from there, and out of there.
    if (!activationToken.empty())
        qputenv("XDG_ACTIVATION_TOKEN", QByteArray::fromStdString(activationToken));
    if (m_wmain.Activate)
        m_wmain.Activate();
}

} // namespace velmo
