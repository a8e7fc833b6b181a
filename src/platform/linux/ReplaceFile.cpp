#include "ReplaceFile.h"

#include "FileHandle.h"

#include "core/PathRules.h"

#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <optional>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace velmo {

namespace {

using ports::WriteResult;

constexpr unsigned ModeBits = 07777;
constexpr unsigned AllWriteBits = 0222;

/// Where a chain of links ends, whether or not anything lies there. Nothing for a loop.
std::optional<std::string> FollowLinks(std::string path)
{
    constexpr int MostLinks = 40;
    for (int followed = 0; followed < MostLinks; ++followed) {
        std::array<char, PATH_MAX> buffer{};
        const ssize_t length = ::readlink(path.c_str(), buffer.data(), buffer.size());
        if (length < 0)
            return path;
        const std::string target(buffer.data(), static_cast<std::size_t>(length));
        path = target.starts_with('/') ? target : SplitPath(path).directory.append(target);
    }
    return std::nullopt;
}

/// While it lives, a pipe that nobody reads makes a write fail instead of ending the process.
class PipeSignalBlocked final
{
public:
    PipeSignalBlocked()
    {
        sigemptyset(&m_pipe);
        sigaddset(&m_pipe, SIGPIPE);
        pthread_sigmask(SIG_BLOCK, &m_pipe, &m_before);
    }

    ~PipeSignalBlocked()
    {
        const timespec now = {};
        if (sigismember(&m_before, SIGPIPE) == 0) {
            while (sigtimedwait(&m_pipe, nullptr, &now) == -1 && errno == EINTR) {}
        }
        pthread_sigmask(SIG_SETMASK, &m_before, nullptr);
    }

    PipeSignalBlocked(const PipeSignalBlocked&) = delete;
    PipeSignalBlocked& operator=(const PipeSignalBlocked&) = delete;

private:
    sigset_t m_pipe = {};
    sigset_t m_before = {};
};

bool WritePieces(int fd, const ports::ContentPieces& next)
{
    for (std::string_view piece = next(); !piece.empty(); piece = next())
        if (!WriteAll(fd, piece))
            return false;
    return true;
}

/// The same to a new file. What has come together is sent on its way to the disk, so that the
/// `fsync` at the end does not find all of a long content still to be done.
bool WriteAhead(int fd, const ports::ContentPieces& next)
{
    constexpr off_t Stretch = off_t{8} * 1024 * 1024;
    off_t started = 0;
    off_t written = 0;
    const auto counted = [&] {
        if (written - started >= Stretch) {
            ::sync_file_range(fd, started, written - started, SYNC_FILE_RANGE_WRITE);
            started = written;
        }
        const std::string_view piece = next();
        written += static_cast<off_t>(piece.size());
        return piece;
    };
    return WritePieces(fd, counted);
}

WriteResult WriteStraight(const std::string& path, const ports::ContentPieces& next)
{
    const PipeSignalBlocked blocked;
    // Without O_NONBLOCK the open would wait for a pipe's reader.
    FileHandle file(::open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK));
    if (!file.IsOpen() || ::fcntl(file.Get(), F_SETFL, 0) != 0)
        return WriteResult::Failed;
    const bool written = WritePieces(file.Get(), next);
    return file.Close() && written ? WriteResult::Written : WriteResult::Failed;
}

/// A new, empty file beside the target; it is removed unless it was renamed to the target.
class TemporaryFile final
{
public:
    TemporaryFile(const std::string& target, unsigned mode)
    {
        const std::string stem =
            SplitPath(target).directory + ".velmo-" + std::to_string(::getpid()) + "-";
        constexpr int MostTries = 100;
        for (int i = 0; i < MostTries && !m_file.IsOpen(); ++i) {
            m_path = stem + std::to_string(i);
            m_file = FileHandle(
                ::open(m_path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, mode));
            if (!m_file.IsOpen() && errno != EEXIST)
                break;
        }
        m_mustRemove = m_file.IsOpen();
    }

    ~TemporaryFile()
    {
        if (m_mustRemove)
            ::unlink(m_path.c_str());
    }

    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    bool SetMode(unsigned mode) { return m_file.IsOpen() && ::fchmod(m_file.Get(), mode) == 0; }

    bool Write(const ports::ContentPieces& next)
    {
        return m_file.IsOpen() && WriteAhead(m_file.Get(), next) && ::fsync(m_file.Get()) == 0
               && m_file.Close();
    }

    bool RenameTo(const std::string& target)
    {
        m_mustRemove = ::rename(m_path.c_str(), target.c_str()) != 0;
        return !m_mustRemove;
    }

private:
    std::string m_path;
    FileHandle m_file;
    bool m_mustRemove = false;
};

/// Whether the file may be written by its mode. The superuser is held to the mode too.
bool IsWritable(const std::string& path, unsigned mode)
{
    return (mode & AllWriteBits) != 0 && ::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0;
}

} // namespace

ports::WriteResult ReplaceFileAt(const std::string& path,
                                 std::string_view content,
                                 unsigned newFileMode)
{
    return ReplaceFileAt(
        path, [&content] { return std::exchange(content, {}); }, newFileMode);
}

ports::WriteResult ReplaceFileAt(const std::string& path,
                                 const ports::ContentPieces& next,
                                 unsigned newFileMode)
{
    if (path.empty() || path.find('\0') != std::string::npos)
        return WriteResult::Failed;
    const std::optional<std::string> target = FollowLinks(path);
    if (!target)
        return WriteResult::Failed;
    struct stat status = {};
    const bool exists = ::stat(target->c_str(), &status) == 0;
    if (exists && (S_ISDIR(status.st_mode) || !IsWritable(*target, status.st_mode)))
        return WriteResult::Failed;
    if (exists && !S_ISREG(status.st_mode))
        return WriteStraight(*target, next);
    TemporaryFile temporary(*target, newFileMode);
    if (exists && !temporary.SetMode(status.st_mode & ModeBits))
        return WriteResult::Failed;
    const bool replaced = temporary.Write(next) && temporary.RenameTo(*target);
    return replaced ? WriteResult::Written : WriteResult::Failed;
}

} // namespace velmo
