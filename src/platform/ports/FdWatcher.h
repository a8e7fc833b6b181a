#pragma once

#include <functional>
#include <memory>

namespace velmo::ports {

/// Tells the user-interface thread that a file descriptor can be read. All calls come from that
/// thread.
class FdWatcher
{
public:
    virtual ~FdWatcher() = default;

    /// Keeps the notices coming; destroying it ends them. It may be destroyed while its own notice
    /// runs. The descriptor stays its maker's and must stay open as long.
    class Watch
    {
    public:
        virtual ~Watch() = default;
    };

    /// Calls `readable` between other events, again and again for as long as `fd` can be read.
    [[nodiscard]] virtual std::unique_ptr<Watch> WatchReadable(int fd,
                                                               std::function<void()> readable) = 0;
};

} // namespace velmo::ports
