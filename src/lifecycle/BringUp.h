#pragma once

#include "StartCore.h"

#include "core/modINI.h"
#include "forms/frmSplash.h"
#include "forms/wmain.h"
#include "ports/Application.h"

#include <vector>

namespace velmo {

/// From the decision to be the player to the main window on the screen.
class BringUp
{
public:
    /// `neighbours` are the windows that may be shown with the main one.
    BringUp(forms::frmSplash& splash,
            forms::wmain& wmain,
            std::vector<controls::Form*> neighbours,
            StartCore& startCore,
            modINI& settings,
            ports::Application& application);

    /// Shows the splash window if the settings want it, and leaves the rest to its timer; else
    /// starts at once.
    void Run();

    /// The splash window's one tick.
    void tmrcZat_Timer();

private:
    void StartAndShow();
    void OpenListBehindPictures();

    forms::frmSplash& m_splash;
    forms::wmain& m_wmain;
    std::vector<controls::Form*> m_windows; ///< the main one and its neighbours
    StartCore& m_startCore;
    modINI& m_settings;
    ports::Application& m_application;
};

} // namespace velmo
