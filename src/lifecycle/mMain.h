#pragma once

#include "core/modINI.h"
#include "ports/Application.h"
#include "ports/Instance.h"

namespace velmo {

/// What becomes of a process.
enum class ProcessRole
{
    Player,    ///< brings up the windows
    Forwarder, ///< has handed its command line over, or had nobody to hand it to: ends
};

/// The process entry: decides whether this process is the player, before any window system is
/// asked. A forwarder has done its work when this returns.
[[nodiscard]] ProcessRole DecideRole(ports::Instance& instance,
                                     modINI& settings,
                                     const std::string& commandLine);

} // namespace velmo
