#pragma once

#include "bass/modBass.h"
#include "core/modINI.h"
#include "playlist/Adding.h"
#include "ports/Application.h"
#include "ports/Dialogs.h"
#include "ports/Files.h"

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
};

/// Brings the sound library up from the settings and finishes the start of the program.
class StartCore
{
public:
    /// `createMainWindow` creates and loads the main window and gives its handle for the library;
    /// it runs before the device is opened.
    StartCore(StartPorts ports,
              modINI& settings,
              modBass& bass,
              Adding& adding,
              std::function<void*()> createMainWindow);

    /// Runs the steps in their order. False after a fatal failure, which has been shown: the
    /// process must end.
    [[nodiscard]] bool Run();

private:
    using Step = bool (StartCore::*)();

    bool EnterApplicationDirectory();
    bool FindSoundLibrary();
    bool CheckSoundLibraryVersion();
    bool OpenSoundDevice();
    bool LeaveToApplicationDirectory();
    bool OpenCommandLine();

    bool Fatal(const std::string& text, const std::string& title);

    StartPorts m_ports;
    modINI& m_settings;
    modBass& m_bass;
    Adding& m_adding;
    std::function<void*()> m_createMainWindow;
    std::unique_ptr<ports::Libraries::Library> m_library;
};

/// The path that a command line means: its directory and the name that the directory search finds;
/// an existing folder as it is; empty if it names nothing.
std::string PathOfCommandLine(const std::string& commandLine, ports::Files& files);

} // namespace velmo
