#pragma once

#include <csignal>
#include <functional>

#include <sys/eventfd.h>
#include <sys/wait.h>
#include <unistd.h>

namespace velmo::test {

/// A copy of the test's process that runs one function and ends with its result; killed if it still
/// runs at the end of the scope. The function must not use the test framework.
class ChildProcess final
{
public:
    explicit ChildProcess(const std::function<int()>& run)
        : m_id(::fork())
    {
        if (m_id == 0)
            ::_exit(run());
    }

    ~ChildProcess()
    {
        if (m_id > 0)
            Kill();
    }

    ChildProcess(ChildProcess&& other) noexcept
        : m_id(other.m_id)
    {
        other.m_id = -1;
    }

    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    ChildProcess& operator=(ChildProcess&&) = delete;

    pid_t Id() const { return m_id; }

    /// Waits for its end. The function's result, or minus the number of the signal that ended it.
    int Wait()
    {
        int status = 0;
        ::waitpid(m_id, &status, 0);
        m_id = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    }

    /// Ends it by SIGKILL and waits for that.
    void Kill()
    {
        ::kill(m_id, SIGKILL);
        Wait();
    }

private:
    pid_t m_id;
};

/// On which one process tells others that they may go on.
class Signal final
{
public:
    ~Signal() { ::close(m_counter); }

    Signal() = default;
    Signal(const Signal&) = delete;
    Signal& operator=(const Signal&) = delete;

    /// True once it was given.
    bool Give() const { return ::eventfd_write(m_counter, 1) == 0; }

    /// Waits for one `Give`.
    bool Take() const
    {
        eventfd_t count = 0;
        return ::eventfd_read(m_counter, &count) == 0;
    }

private:
    int m_counter = ::eventfd(0, EFD_SEMAPHORE);
};

} // namespace velmo::test
