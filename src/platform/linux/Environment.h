#pragma once

#include <string>

namespace velmo {

/// What of the process's surroundings decides where its files lie. Taken once, at process entry; a
/// variable that is not set is empty.
struct Environment
{
    std::string velmoHome;       ///< VELMO_HOME, absolute
    std::string velmoDrives;     ///< VELMO_DRIVES
    std::string xdgDataHome;     ///< XDG_DATA_HOME
    std::string xdgRuntimeDir;   ///< XDG_RUNTIME_DIR
    std::string home;            ///< HOME, else the user's home directory by the password database
    std::string activationToken; ///< XDG_ACTIVATION_TOKEN, else DESKTOP_STARTUP_ID
    std::string executable;      ///< real path of the running executable
    std::string currentDirectory;
    std::string temporaryDirectory = "/tmp"; ///< for what finds no other place
    unsigned userId = 0;                     ///< effective
};

/// Makes the paths in the variables that others read later (VELMO_HOME, VELMO_AUDIO) absolute, as
/// the current directory is going to change. Call it where `ReadEnvironment` is called, before it.
void MakePathVariablesAbsolute();

/// Reads the process's own surroundings. Call it before any thread is started and before the
/// current directory changes.
Environment ReadEnvironment();

} // namespace velmo
