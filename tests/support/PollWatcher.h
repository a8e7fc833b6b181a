#pragma once

#include "ports/FdWatcher.h"

#include <cerrno>
#include <functional>
#include <list>
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
        return std::make_unique<Entry>(*this, fd, std::move(readable));
    }

    /// Handles events until `done`; false if there was none for `patienceMs` in a row.
    bool RunUntil(const std::function<bool()>& done, int patienceMs = 10000)
    {
        while (!done()) {
            std::vector<pollfd> waiting;
            for (const Entry* entry : m_entries)
                waiting.push_back({entry->fd, POLLIN, 0});
            const int ready = ::poll(waiting.data(), waiting.size(), patienceMs);
            if (ready == 0 || (ready < 0 && errno != EINTR))
                return false;
            for (const pollfd& polled : waiting)
                if (polled.revents != 0)
                    Notify(polled.fd);
        }
        return true;
    }

private:
    struct Entry final : Watch
    {
        Entry(PollWatcher& owner, int descriptor, std::function<void()> notice)
            : watcher(owner)
            , fd(descriptor)
            , readable(std::move(notice))
        {
            watcher.m_entries.push_back(this);
        }

        ~Entry() override { watcher.m_entries.remove(this); }

        Entry(const Entry&) = delete;
        Entry& operator=(const Entry&) = delete;

        PollWatcher& watcher;
        int fd;
        std::function<void()> readable;
    };

    void Notify(int fd)
    {
        for (const Entry* entry : m_entries) {
            if (entry->fd == fd) {
                const std::function<void()> notice = entry->readable; // it may end its own watch
                notice();
                return;
            }
        }
    }

    std::list<Entry*> m_entries;
};

} // namespace velmo::test
