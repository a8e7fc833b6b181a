#pragma once

#include <string>
#include <string_view>
#include <utility>

namespace velmo {

/// Owner of a file descriptor; -1 for none.
class FileHandle final
{
public:
    FileHandle() = default;

    explicit FileHandle(int fd)
        : m_fd(fd)
    {}

    ~FileHandle() { Close(); }

    FileHandle(const FileHandle&) = delete;
    FileHandle& operator=(const FileHandle&) = delete;

    FileHandle(FileHandle&& other) noexcept
        : m_fd(std::exchange(other.m_fd, -1))
    {}

    FileHandle& operator=(FileHandle&& other) noexcept
    {
        if (this != &other) {
            Close();
            m_fd = std::exchange(other.m_fd, -1);
        }
        return *this;
    }

    int Get() const { return m_fd; }

    bool IsOpen() const { return m_fd >= 0; }

    /// Closes now. False if the system reports that what was written is lost; true too if nothing
    /// was open.
    bool Close();

private:
    int m_fd = -1;
};

/// Writes everything, going on after interruptions. False on any failure.
[[nodiscard]] bool WriteAll(int fd, std::string_view bytes);

} // namespace velmo
