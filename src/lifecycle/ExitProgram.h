#pragma once

#include "EndingSteps.h"

#include "ports/Application.h"

#include <vector>

namespace velmo {

/// The orderly end of a run, whatever asks for it. A second call while it runs does nothing.
/// User-interface thread only.
class ExitProgram
{
public:
    /// `windows` are all the windows that may be visible.
    ExitProgram(EndingSteps& steps,
                std::vector<controls::Form*> windows,
                ports::Application& application);

    void Run();

private:
    void MuteIfSilent();
    void StopSound();
    void WriteState();
    void UndoSurroundings();

    EndingSteps& m_steps;
    std::vector<controls::Form*> m_windows;
    ports::Application& m_application;
    bool m_running = false;
};

} // namespace velmo
