#include "File.h"

#include "bass_plugin.h"

#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace velmo::engine {

Result<File> File::Open(const char* path) noexcept
{
    // Without O_NONBLOCK the opening of a named pipe would wait for its other end.
    File file;
    do
        file.m_descriptor = ::open(path, O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    while (file.m_descriptor < 0 && errno == EINTR);
    struct stat status = {};
    if (file.m_descriptor < 0 || ::fstat(file.m_descriptor, &status) != 0
        || !S_ISREG(status.st_mode))
        return Result<File>::Failure(BASS_DECODER_CANNOT_OPEN);
    file.m_size = static_cast<std::uint64_t>(status.st_size);
    return {.value = std::move(file)};
}

File::File(File&& other) noexcept
    : m_descriptor(std::exchange(other.m_descriptor, -1))
    , m_size(std::exchange(other.m_size, 0))
{}

File& File::operator=(File&& other) noexcept
{
    std::swap(m_descriptor, other.m_descriptor);
    std::swap(m_size, other.m_size);
    return *this;
}

File::~File()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

std::size_t File::ReadAt(std::uint64_t offset, std::span<std::uint8_t> out) const noexcept
{
    std::size_t got = 0;
    while (got < out.size()) {
        const ssize_t bytes = ::pread(
            m_descriptor, out.data() + got, out.size() - got, static_cast<off_t>(offset + got));
        if (bytes < 0 && errno == EINTR)
            continue;
        if (bytes <= 0)
            break;
        got += static_cast<std::size_t>(bytes);
    }
    return got;
}

} // namespace velmo::engine
