#pragma once

#include "ports/FdWatcher.h"

#include <cerrno>
#include <functional>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include <poll.h>

namespace velmo::test {

/// An event loop of nothing but file descriptors.
class PollWatcher final : public ports::FdWatcher
{
public:
    [[nodiscard]] std::unique_ptr<Watch> WatchReadable(int fd,
                                                       std::function<void()> readable) override
    {
        m_notices[fd] = std::move(readable);
        return std::make_unique<Entry>(*this, fd);
    }

    /// Handles events until `done`; false if there was none for `patienceMs` in a row.
    bool RunUntil(const std::function<bool()>& done, int patienceMs = 60000)
    {
        while (!done()) {
            std::vector<pollfd> waiting;
            for (const auto& [fd, notice] : m_notices)
                waiting.push_back({fd, POLLIN, 0});
            const int ready = ::poll(waiting.data(), waiting.size(), patienceMs);
            if (ready == 0 || (ready < 0 && errno != EINTR))
                return false;
            for (const pollfd& polled : waiting) {
                const auto found = m_notices.find(polled.fd);
                if (polled.revents != 0 && found != m_notices.end())
                    std::function<void()>(found->second)(); // a copy: it may end its own watch
            }
        }
        return true;
    }

private:
    struct Entry final : Watch
    {
        Entry(PollWatcher& owner, int descriptor)
            : watcher(owner)
            , fd(descriptor)
        {}
        ~Entry() override { watcher.m_notices.erase(fd); }
        Entry(const Entry&) = delete;
        Entry& operator=(const Entry&) = delete;

        PollWatcher& watcher;
        int fd;
    };

    std::map<int, std::function<void()>> m_notices;
};

} // namespace velmo::test
