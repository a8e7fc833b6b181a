#pragma once

#include <semaphore.h>

#include <atomic>
#include <chrono>
#include <optional>

namespace velmo::engine {

/// Something to sleep on, for one sleeper. A signal that comes while nobody sleeps is kept; several
/// are one.
///
/// Made of a semaphore and not of a condition, since the thread that plays may not take a lock: a
/// signal is one atomic exchange and, only where the last one has been slept off, a futex wake.
class Wake
{
public:
    Wake() noexcept;
    ~Wake();
    Wake(const Wake&) = delete;
    Wake& operator=(const Wake&) = delete;

    /// Ends the sleep, or the next one. Any thread, the one that plays too.
    void Signal() noexcept;

    /// Sleeps until a signal comes, or for `timeout`. The sleeper's thread.
    void Wait(std::optional<std::chrono::milliseconds> timeout = std::nullopt) noexcept;

    /// The same without a timeout, but looks out for the signal for a tenth of a millisecond before
    /// it sleeps: for one whose signal is mostly nearer than a sleep and a wake take. The sleeper's
    /// thread.
    void WaitAlert() noexcept;

private:
    std::atomic<bool> m_pending{false};
    sem_t m_semaphore = {};
};

} // namespace velmo::engine
