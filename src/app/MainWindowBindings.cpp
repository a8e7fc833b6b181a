#include "Program.h"

namespace velmo {

/// The main window's events, and those of the splash and of the error window.
void Program::BindMainWindow()
{
    m_mainWindowEvents.Bind();
    m_wmain.QueryClose = [this] { m_exitProgram.Run(); };
    m_wmain.Resize = [this] {
        m_spectrum.wmain_Resize();
        m_mainWindow.Form_Resize();
    };
    m_wmain.tmrSpectrum.Tick = [this] { m_spectrum.tmrSpectrum_Timer(); };
    m_wmain.tmrBASS.Tick = [this] { m_monitor.MonitorTick(); };
    m_wmain.tmrScroll.Tick = [this] {
        m_startCore.OpenList(); // of a window that nobody has painted yet
        m_titleScroller.tmrScroll_Timer();
        m_spectrum.tmrScroll_Timer();
    };
    m_transport.SoundStarts = [this] { m_spectrum.Wake(); };
    m_splash.tmrcZat.Tick = [this] { m_bringUp.tmrcZat_Timer(); };
    m_errMGR.Label1.Click = [this] { m_errMGR.Hide(); };
}

} // namespace velmo
