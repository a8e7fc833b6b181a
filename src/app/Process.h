#pragma once

#include "core/modINI.h"
#include "linux/CommandLine.h"
#include "linux/Directories.h"
#include "linux/Environment.h"
#include "linux/LinuxFiles.h"
#include "linux/LinuxInstance.h"
#include "linux/ProfileFile.h"
#include "qt/QtDialogs.h"
#include "qt/QtFdWatcher.h"

#include <string>
#include <vector>

namespace velmo {

/// What a process has before it knows whether it is the player: files, settings and the other
/// instances, but no window system. A process that only hands its command line over needs no more
/// than this.
struct Process
{
    explicit Process(std::vector<std::string> arguments);

    Environment environment = ReadEnvironment();
    Directories directories = FindDirectories(environment);
    LinuxFiles files{environment.velmoDrives};
    std::string commandLine;
    ProfileFile settingsFile{files};
    qt::QtDialogs dialogs; ///< asked only once there is a window system
    modINI settings{settingsFile, dialogs, directories.application};
    qt::QtFdWatcher fdWatcher; ///< used only by the player
    LinuxInstance instance{environment, fdWatcher};
};

} // namespace velmo
