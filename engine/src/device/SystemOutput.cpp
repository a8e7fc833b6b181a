#include "SystemOutput.h"

#include "OutputThread.h"

#include <chrono>

namespace velmo::engine {

namespace {

constexpr std::chrono::milliseconds CloseLimit{1500};

} // namespace

std::unique_ptr<Output> SystemOutput::Open(const OutputContext& context, DeviceError& error)
{
    auto output = std::make_unique<SystemOutput>(context);
    error = output->m_control->AwaitOpened();
    if (error != DeviceError::None)
        return nullptr;
    return output;
}

SystemOutput::SystemOutput(const OutputContext& context)
    : m_control(std::make_shared<SystemControl>(context))
    , m_thread(StartEngineThread("velmo-device", [control = m_control] { control->Run(); }))
{}

SystemOutput::~SystemOutput()
{
    m_control->RequestClose();
    if (m_control->AwaitFinished(CloseLimit)) {
        m_thread.join();
        return;
    }
    // It may come back into this library, which stays mapped for that: it's linked as nodelete.
    m_thread.detach();
}

void SystemOutput::SetRunning(bool running) noexcept
{
    m_control->SetRunning(running);
}

} // namespace velmo::engine
