#include "Program.h"

#include "controls/EventEntry.h"
#include "core/SettingsKeys.h"
#include "core/TextRules.h"
#include "lifecycle/HandOver.h"

#include <QByteArray>

namespace velmo {

Program::Program(Process& process)
    : m_process(process)
    , m_application(process)
    , m_tagLibrary(m_libraries, process.directories.program + TagLibraryFileName)
    , m_tags(m_bass, m_tagLibrary, process.files, process.directories.application)
    , m_adding(m_playlist, m_tags, process.settings, process.files)
    , m_tracks(m_bass,
               process.settings,
               process.files,
               m_tags,
               m_transport,
               {m_wmain, m_playlist, m_errMGR})
    , m_monitor(m_bass, m_transport, {m_wmain, m_playlist, m_errMGR}, m_tracks)
    , m_titleReader(m_playlist, m_tracks, PathOfCommandLine(process.commandLine, process.files))
    , m_mainWindow(m_wmain, m_playlist, m_bass, process.settings, m_desktop, m_transport, m_monitor)
    , m_titleScroller(m_wmain, process.settings, m_transport)
    , m_startCore({m_application, process.files, m_libraries, process.dialogs},
                  process.settings,
                  m_bass,
                  m_adding,
                  [this] { return CreateMainWindow(); })
    , m_bringUp(m_splash, m_wmain, m_startCore, process.settings, m_application)
    , m_exitProgram(m_bass,
                    process.settings,
                    m_transport,
                    m_wmain,
                    {&m_wmain, &m_errMGR, &m_splash},
                    process.instance,
                    m_application)
    , m_wmainView(m_wmain)
    , m_errMGRView(m_errMGR)
    , m_splashView(m_splash)
    , m_wmainTimers(m_wmain, m_timers)
    , m_playlistTimers(m_playlist, m_timers)
    , m_splashTimers(m_splash, m_timers)
    , m_signals([this] { m_exitProgram.Run(); })
{
    BindEvents();
}

void Program::Start()
{
    controls::RunEvent([this] { m_bringUp.Run(); });
}

void Program::BindEvents()
{
    m_wmain.QueryClose = [this] { m_exitProgram.Run(); };
    m_wmain.imgClose.MouseUp = [this](const auto& event) {
        if (ReleasedInside(m_wmain.imgClose, event))
            m_exitProgram.Run();
    };
    m_wmain.imgMinimize.MouseUp = [this](const auto& event) {
        m_mainWindow.imgMinimize_MouseUp(event);
    };
    m_wmain.tmrBASS.Tick = [this] { m_monitor.MonitorTick(); };
    m_wmain.tmrScroll.Tick = [this] { m_titleScroller.tmrScroll_Timer(); };
    m_wmain.lblTime.MouseDown = [this](const auto& event) {
        m_mainWindow.lblTime_MouseDown(event);
    };
    m_wmain.imgPositionBar.MouseDown = [this](const auto& event) {
        m_mainWindow.imgPositionBar_MouseDown(event);
    };
    m_wmain.imgPositionTicker.MouseDown = [this](const auto& event) {
        m_mainWindow.imgPositionTicker_MouseDown(event);
    };
    m_wmain.imgPositionTicker.MouseMove = [this](const auto& event) {
        m_mainWindow.imgPositionTicker_MouseMove(event);
    };
    m_wmain.imgPositionTicker.MouseUp = [this](const auto& event) {
        m_mainWindow.imgPositionTicker_MouseUp(event);
    };
    m_playlist.tmrInfo.Tick = [this] { m_titleReader.tmrInfo_Timer(); };
    m_splash.tmrcZat.Tick = [this] { m_bringUp.tmrcZat_Timer(); };
    m_errMGR.Label1.Click = [this] { m_errMGR.Hide(); };
}

void* Program::CreateMainWindow()
{
    m_mainWindow.Load([this] { MarkMainWindow(); });
    // The engine takes a window's address and has no use for it: sound here belongs to no window.
    return nullptr;
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
    if (IsFalse(allowsMany))
        events.handOver = [this](const ports::HandOverRecord& record) {
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
