#pragma once

#include "Environment.h"

#include <string>

namespace velmo {

/// Where the program's own files lie. Both have a separator at the end and are absolute.
struct Directories
{
    std::string program;     ///< executable, libraries, shipped plugins
    std::string application; ///< everything that is read and written
};

/// Decides both, once for the life of the process. The application directory is, in this order:
/// `VELMO_HOME`; the program directory, if it can be written and is no installed copy;
/// `velmo-player` in the user's data directory. The first and the last are created if absent; a
/// failure of that shows when a file is written.
Directories FindDirectories(const Environment& environment);

/// Whether a copy of the program in that directory was installed for several users, and so keeps no
/// files of its own:
/// `<prefix>/lib.../velmo-player`, or anything below `/usr`, `/opt`, `/nix`, `/snap`, `/app`.
bool IsInstalledCopy(const std::string& programDirectory);

} // namespace velmo
