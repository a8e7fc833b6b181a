#pragma once

#include "EndingSteps.h"
#include "StartCore.h"

#include "ports/Application.h"

#include <functional>
#include <vector>

namespace velmo {

/// Saves, frees the sound library and starts it again from the settings, in the same process. What
/// played stays silent; the transport keeps its variables, `CurrentChannel` with a dead handle.
/// User-interface thread only.
class RestartCore
{
public:
    /// `windows` are all windows but the main window and the playlist, which are unloaded whether
    /// they are visible or not.
    RestartCore(EndingSteps& steps,
                StartCore& startCore,
                std::vector<controls::Form*> windows,
                ports::Application& application);

    /// Restarts once the present event has been handled, since that may be one of a window which
    /// the restart unloads. Calls until then are one restart.
    void Queue();

    void Run();

private:
    void UnloadWindows();

    EndingSteps& m_steps;
    StartCore& m_startCore;
    std::vector<controls::Form*> m_windows;
    ports::Application& m_application;
    bool m_queued = false;
};

} // namespace velmo
