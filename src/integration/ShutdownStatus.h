#pragma once

#include "core/modINI.h"

#include <string>

namespace velmo {

/// Whether the computer is to be shut down at the time set: all that the shutdown timer looks at.
struct ShutdownState
{
    std::string ShutdownStatus = "Disabled"; ///< "Enabled" or "Disabled"
};

/// "Enabled" if the settings say exactly that, else "Disabled".
std::string ReadShutdownStatus(modINI& settings);

} // namespace velmo
