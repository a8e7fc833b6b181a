#include "STClose.h"

#include "core/CallIfSet.h"

namespace velmo {

STClose::STClose(EndingSteps& steps, ports::Application& application)
    : m_steps(steps)
    , m_application(application)
{}

void STClose::Run()
{
    m_steps.WriteVolume(VolumeText::AsIs);
    m_steps.StopMonitor();
    m_steps.FreeLibrary();
    m_steps.WritePlace();
    m_steps.SaveList();
    m_steps.Modules().instance.ReleaseInstance();
    CallIfSet(m_steps.Calls().RemoveTrayIcon);
    m_application.Quit(0);
}

} // namespace velmo
