#include "Wake.h"

#include <cerrno>
#include <ctime>

namespace velmo::engine {

namespace {

timespec DeadlineAfter(std::chrono::milliseconds timeout) noexcept
{
    timespec deadline = {};
    clock_gettime(CLOCK_MONOTONIC, &deadline);
    const auto nanoseconds = std::chrono::nanoseconds(deadline.tv_nsec) + timeout;
    const auto seconds = std::chrono::floor<std::chrono::seconds>(nanoseconds);
    deadline.tv_sec += seconds.count();
    deadline.tv_nsec = (nanoseconds - seconds).count();
    return deadline;
}

} // namespace

Wake::Wake() noexcept
{
    sem_init(&m_semaphore, 0, 0);
}

Wake::~Wake()
{
    sem_destroy(&m_semaphore);
}

void Wake::Signal() noexcept
{
    if (!m_pending.exchange(true))
        sem_post(&m_semaphore);
}

void Wake::Wait(std::optional<std::chrono::milliseconds> timeout) noexcept
{
    int failed = 0;
    if (timeout) {
        const timespec deadline = DeadlineAfter(*timeout);
        do
            failed = sem_clockwait(&m_semaphore, CLOCK_MONOTONIC, &deadline);
        while (failed != 0 && errno == EINTR);
    } else {
        do
            failed = sem_wait(&m_semaphore);
        while (failed != 0 && errno == EINTR);
    }
    // Only what was counted is taken back, so that the count is never above one.
    if (failed == 0)
        m_pending.exchange(false);
}

void Wake::WaitAlert() noexcept
{
    constexpr std::chrono::microseconds Alert{100};
    const auto end = std::chrono::steady_clock::now() + Alert;
    while (!m_pending.load(std::memory_order_acquire) && std::chrono::steady_clock::now() < end) {}
    Wait();
}

} // namespace velmo::engine
