#include "FileHandle.h"

#include <cerrno>

#include <unistd.h>

namespace velmo {

bool FileHandle::Close()
{
    return m_fd < 0 || ::close(std::exchange(m_fd, -1)) == 0;
}

bool WriteAll(int fd, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t written = ::write(fd, bytes.data(), bytes.size());
        if (written < 0 && errno != EINTR)
            return false;
        if (written > 0)
            bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

} // namespace velmo
