#pragma once

#include "EndingSteps.h"

#include "ports/Application.h"

namespace velmo {

/// The short close of the tray's menu. It saves neither the equalizer nor the window's state.
/// User-interface thread only.
class STClose
{
public:
    STClose(EndingSteps& steps, ports::Application& application);

    void Run();

private:
    EndingSteps& m_steps;
    ports::Application& m_application;
};

} // namespace velmo
