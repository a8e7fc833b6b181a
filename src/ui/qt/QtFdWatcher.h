#pragma once

#include "ports/FdWatcher.h"

namespace velmo::qt {

/// Watches descriptors in the event loop. User-interface thread.
class QtFdWatcher final : public ports::FdWatcher
{
public:
    [[nodiscard]] std::unique_ptr<Watch> WatchReadable(int fd,
                                                       std::function<void()> readable) override;
};

} // namespace velmo::qt
