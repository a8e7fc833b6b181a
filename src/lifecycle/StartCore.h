#pragma once

#include "bass/PluginTable.h"
#include "bass/modBass.h"
#include "core/modINI.h"
#include "forms/frmResources.h"
#include "integration/ShutdownStatus.h"
#include "playlist/Adding.h"
#include "ports/Application.h"
#include "ports/Associations.h"
#include "ports/Dialogs.h"
#include "ports/Files.h"
#include "sound/ProxySettings.h"
#include "sound/TransportState.h"
#include "windows/modSystray.h"

#include <functional>
#include <memory>
#include <string>

namespace velmo {

/// What `StartCore` needs of the world.
struct StartPorts
{
    ports::Application& application;
    ports::Files& files;
    ports::Libraries& libraries;
    ports::Dialogs& dialogs;
    ports::Associations& associations;
};

/// What a start fills, and whose operations it calls.
struct StartModules
{
    modINI& settings;
    modBass& bass;
    PluginTable& plugins;
    ProxySettings& proxy;
    TransportState& transport;
    modSystray& systray;
    ShutdownState& shutdown;
    forms::frmResources& resources;
    Adding& adding;
};

/// Steps that belong to modules of which the start knows nothing else. None may be empty.
struct StartCalls
{
    /// Creates and loads the main window and gives its handle for the library.
    std::function<void*()> createMainWindow;
    /// Makes the equalizer's window take no input. May be called twice.
    std::function<void()> disableEqualizer;
    /// Builds header and palette of the picture from the settings.
    std::function<void()> buildPalette;
};

enum class StartKind
{
    Process, ///< the first of the process: takes the command line
    Restart, ///< a later one: only reloads the list
};

/// Brings the sound library up from the settings and finishes the start of the program.
class StartCore
{
public:
    StartCore(StartPorts ports, StartModules modules, StartCalls calls);

    /// Runs the steps in their order, all but the last one. False if the process must end: after a
    /// fatal failure, which has been shown, or where the program was ended while a box was open.
    /// May be called again: everything is built anew.
    [[nodiscard]] bool Run(StartKind kind);

    /// The last step, once a run: fills the list from the command line, or from the list of the
    /// last run. It is apart because a long list may follow the windows' first picture; whoever
    /// needs the rows calls it first. Does nothing unless a run has got here.
    void OpenList();

    /// Whether the latest run has got as far as to fill the list. Before that the list in memory is
    /// nobody's, and must not be saved.
    bool IsListOpen() const { return m_isListOpen; }

private:
    using Step = void (StartCore::*)();

    void EnterApplicationDirectory();
    void FindSoundLibrary();
    void CheckSoundLibraryVersion();
    void OpenSoundDevice();
    void FindEqualizer();
    void CheckEqualizerVersion();
    void FillPluginTable();
    void BuildPalette();
    void SetLibraryOptions();
    void SetReverb();
    void ResetTitle();
    void ShowTrayIcon();
    void MarkAlwaysOnTop();
    void RenewAssociations();
    void TakeShutdownStatus();
    void SetProxy();
    void LeaveToApplicationDirectory();
    void OpenCommandLine();

    void Fatal(const std::string& text, const std::string& title);
    void EqualizerFailed(const std::string& text);

    StartPorts m_ports;
    StartModules m_modules;
    StartCalls m_calls;
    std::unique_ptr<ports::Libraries::Library> m_library;
    std::unique_ptr<ports::Libraries::Library> m_effects;
    StartKind m_kind = StartKind::Process;
    bool m_failed = false;
    bool m_isReady = false; ///< for the list
    bool m_isListOpen = false;
};

/// The path that a command line means: its directory and the name that the directory search finds;
/// an existing folder as it is; empty if it names nothing.
std::string PathOfCommandLine(const std::string& commandLine, ports::Files& files);

} // namespace velmo
