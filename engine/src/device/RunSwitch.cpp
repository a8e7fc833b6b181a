#include "RunSwitch.h"

namespace velmo::engine {

void RunSwitch::SetRunning(bool running) noexcept
{
    {
        const std::lock_guard lock(m_mutex);
        m_running = running;
    }
    m_changed.notify_one();
}

void RunSwitch::Quit() noexcept
{
    {
        const std::lock_guard lock(m_mutex);
        m_quit = true;
    }
    m_changed.notify_one();
}

void RunSwitch::SleepUntil(std::chrono::steady_clock::time_point time)
{
    std::unique_lock lock(m_mutex);
    m_changed.wait_until(lock, time, [this] { return m_quit || !m_running; });
}

} // namespace velmo::engine
