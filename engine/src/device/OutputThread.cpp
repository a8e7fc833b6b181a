// Signals belong to the process's main thread, which ends the program properly. A thread inherits
// its mask, so it is set around the creation: threads that a sound library starts inherit it too.

#include "OutputThread.h"

#include <sched.h>

#include <csignal>
#include <utility>

#include <pthread.h>
#include <sys/resource.h>

namespace velmo::engine {

namespace {

class AllSignalsBlocked
{
public:
    AllSignalsBlocked() noexcept
    {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &m_before);
    }
    ~AllSignalsBlocked() { pthread_sigmask(SIG_SETMASK, &m_before, nullptr); }
    AllSignalsBlocked(const AllSignalsBlocked&) = delete;
    AllSignalsBlocked& operator=(const AllSignalsBlocked&) = delete;

private:
    sigset_t m_before{};
};

} // namespace

std::thread StartEngineThread(const char* name, std::function<void()> body)
{
    const AllSignalsBlocked blocked;
    std::thread thread(std::move(body));
    pthread_setname_np(thread.native_handle(), name);
    return thread;
}

void AskForRealTime() noexcept
{
    if (sched_getscheduler(0) != SCHED_OTHER)
        return;
    sched_param parameters{};
    parameters.sched_priority = sched_get_priority_min(SCHED_RR);
    sched_setscheduler(0, SCHED_RR | SCHED_RESET_ON_FORK, &parameters);
}

void AskForPriority() noexcept
{
    constexpr int Nice = -10;
    // The system keeps it for each thread, and takes the calling one for 0.
    setpriority(PRIO_PROCESS, 0, Nice);
}

} // namespace velmo::engine
