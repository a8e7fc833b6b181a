#pragma once

#include "bass/modBass.h"
#include "core/modINI.h"
#include "forms/wmain.h"
#include "ports/Application.h"
#include "ports/Instance.h"
#include "sound/TransportState.h"
#include "windows/wmain.h"

#include <functional>
#include <vector>

namespace velmo {

/// The orderly end of a run, whatever asks for it. A second call while it runs does nothing.
class ExitProgram
{
public:
    /// `windows` are all the windows that may be visible. Place and state of the main window are
    /// saved only if its load has run: before that they are nobody's wish.
    ExitProgram(const modBass& bass,
                modINI& settings,
                TransportState& state,
                forms::wmain& wmain,
                std::vector<controls::Form*> windows,
                ports::Instance& instance,
                ports::Application& application);

    void Run();

private:
    void StopSound();
    void SaveWindow();

    const modBass& m_bass;
    modINI& m_settings;
    TransportState& m_state;
    forms::wmain& m_wmain;
    std::vector<controls::Form*> m_windows;
    ports::Instance& m_instance;
    ports::Application& m_application;
    bool m_running = false;
};

} // namespace velmo
