/// Reading of regular files: the only kind of file that the engine plays.
#pragma once

#include "decode/Result.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace velmo::engine {

/// An open regular file, read at any place. Owns its descriptor. Different objects may be used on
/// different threads; one object by one thread at a time.
class File
{
public:
    /// Opens `path` (bytes, NUL at the end) for reading; never waits for another process. Fails
    /// with 2 for whatever is missing, unreadable or no regular file: a directory, a named pipe, a
    /// socket, a device.
    static Result<File> Open(const char* path) noexcept;

    File() noexcept = default;
    File(File&& other) noexcept;
    File& operator=(File&& other) noexcept;
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    ~File();

    /// Bytes in the file when it was opened.
    std::uint64_t Size() const noexcept { return m_size; }

    /// Fills `out` from byte `offset` on; gives how many bytes were read, fewer only at the file's
    /// end or where it cannot be read.
    std::size_t ReadAt(std::uint64_t offset, std::span<std::uint8_t> out) const noexcept;

private:
    int m_descriptor = -1;
    std::uint64_t m_size = 0;
};

} // namespace velmo::engine
