#pragma once

#include "Environment.h"

#include <optional>
#include <string>
#include <vector>

namespace velmo {

/// Where the processes of one user find each other.
struct InstancePaths
{
    std::string directory;  ///< of the mutex, with a separator; only its owner may enter it
    std::string socketStem; ///< what the path of every socket begins with

    /// Path of the socket of the process with that id.
    std::string SocketOf(unsigned processId) const;

    /// Paths of all sockets that lie there, the newest first.
    std::vector<std::string> Sockets() const;
};

/// Makes the directories ready. With `VELMO_HOME` it is `.run` below that; else `velmo-player` in
/// the run-time directory, else in the temporary directory under the user's id. Paths that are too
/// long for a socket move the sockets, not the mutex, to that last place, under a name made from
/// the directory. Nothing if there is no directory that belongs to the user.
std::optional<InstancePaths> PrepareInstancePaths(const Environment& environment);

} // namespace velmo
