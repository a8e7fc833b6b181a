#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace velmo::engine {

/// Tells a thread of an output's own when to run, to stand still and to end.
class RunSwitch
{
public:
    /// Any thread but the one that is told.
    void SetRunning(bool running) noexcept;
    /// The same, for good.
    void Quit() noexcept;

    /// Sleeps while the output shall stand still, after a call of `stand`. False when it shall end.
    /// The thread that is told.
    template<class Stand>
    [[nodiscard]] bool AwaitStart(Stand stand)
    {
        std::unique_lock lock(m_mutex);
        // In one hold, so that it neither ends nor sleeps without that call.
        if (m_quit || !m_running) {
            lock.unlock();
            stand();
            lock.lock();
        }
        m_changed.wait(lock, [this] { return m_quit || m_running; });
        return !m_quit;
    }

    /// Sleeps until `time`, or until the output shall not run any more. The thread that is told.
    void SleepUntil(std::chrono::steady_clock::time_point time);

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    // Guarded by m_mutex.
    bool m_running = false;
    bool m_quit = false;
};

} // namespace velmo::engine
