#include "LinuxFiles.h"

#include "FileHandle.h"
#include "FolderWalk.h"
#include "PathResolver.h"
#include "ReplaceFile.h"

#include "core/PathRules.h"
#include "core/TextRules.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <limits>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace velmo {

namespace {

constexpr std::int64_t NanosecondsPerSecond = 1'000'000'000;
constexpr unsigned NewFileMode = 0644;

std::int64_t Nanoseconds(const timespec& time)
{
    return static_cast<std::int64_t>(time.tv_sec) * NanosecondsPerSecond + time.tv_nsec;
}

bool IsFile(FileKind kind)
{
    return kind == FileKind::Regular || kind == FileKind::Other;
}

/// Whether the system itself may know something by that path.
bool IsSystemPath(const std::string& path)
{
    return ShapeOf(path) == PathShape::Posix && path.find('\0') == std::string::npos;
}

/// First file of the folder whose name matches, by name and without regard to case; hidden files
/// don't.
std::string FirstMatch(const std::string& folder, const std::string& pattern)
{
    std::string best;
    FirstNameIn(folder, [&](const std::string& name) {
        if (!name.starts_with('.') && MatchesPattern(name, pattern)
            && (best.empty() || LessIgnoringCase(name, best)) && IsFile(KindOfFile(folder + name)))
            best = name;
        return false;
    });
    return best;
}

/// Reads to the end, but at most `most` bytes, and what a file grows by meanwhile isn't read: one
/// that grows all the time has no end. `size` is 0 if that is not known. A pipe whose writer is
/// silent for too long is given up, since the user waits.
std::optional<std::string> ReadUpTo(std::size_t most, int fd, std::size_t size)
{
    constexpr int PatienceMs = 1000;
    constexpr std::size_t Block = std::size_t{256} * 1024;
    std::string content;
    std::size_t filled = 0;
    for (;;) {
        content.resize(std::min(most, size > 0 ? size : filled + Block));
        const ssize_t count = ::read(fd, content.data() + filled, content.size() - filled);
        if (count > 0) {
            filled += static_cast<std::size_t>(count);
            continue;
        }
        if (count == 0) {
            content.resize(filled);
            return content;
        }
        pollfd waiting{fd, POLLIN, 0};
        if (errno != EINTR && (errno != EAGAIN || ::poll(&waiting, 1, PatienceMs) <= 0))
            return std::nullopt;
    }
}

class DirectoryLock final : public ports::Files::Lock
{
public:
    explicit DirectoryLock(FileHandle directory)
        : m_directory(std::move(directory))
    {}

private:
    FileHandle m_directory; // closing it gives the lock back
};

} // namespace

LinuxFiles::LinuxFiles(std::string_view drives)
    : m_drives(drives)
{}

std::string LinuxFiles::DirSearch(const std::string& path)
{
    const std::optional<std::string> system = SystemPath(path);
    if (!system)
        return {};
    const PathParts parts = SplitPath(*system);
    if (parts.name.empty())
        return {};
    const FileKind exact = KindOfFile(*system);
    if (IsFile(exact))
        return parts.name;
    if (parts.name.find_first_of("*?") != std::string::npos) {
        const std::string folder = parts.directory.empty() ? "./" : parts.directory;
        const std::optional<std::string> found = ResolveIgnoringCase(folder);
        return found ? FirstMatch(*found, parts.name) : std::string();
    }
    const std::optional<std::string> found = ResolveIgnoringCase(*system);
    return found && IsFile(KindOfFile(*found)) ? SplitPath(*found).name : std::string();
}

bool LinuxFiles::IsDirectory(const std::string& path)
{
    const std::optional<std::string> found = Find(path);
    return found && KindOfFile(*found) == FileKind::Directory;
}

std::string LinuxFiles::ResolveForOpen(const std::string& path)
{
    return Find(path).value_or(path);
}

std::optional<std::string> LinuxFiles::Read(const std::string& path)
{
    return ReadStart(path, std::numeric_limits<std::size_t>::max());
}

std::optional<std::string> LinuxFiles::ReadStart(const std::string& path, std::size_t most)
{
    const std::optional<std::string> found = Find(path);
    if (!found)
        return std::nullopt;
    // Without O_NONBLOCK a pipe without writer would hold the user interface for good.
    const FileHandle file(::open(found->c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK));
    struct stat status = {};
    if (!file.IsOpen() || ::fstat(file.Get(), &status) != 0
        || (!S_ISREG(status.st_mode) && !S_ISFIFO(status.st_mode)))
        return std::nullopt;
    return ReadUpTo(
        most, file.Get(), S_ISREG(status.st_mode) ? static_cast<std::size_t>(status.st_size) : 0);
}

std::optional<ports::FileStamp> LinuxFiles::Stamp(const std::string& path)
{
    struct stat status = {};
    const bool isExact = IsSystemPath(path) && ::stat(path.c_str(), &status) == 0;
    if (!isExact) {
        const std::optional<std::string> found = Find(path);
        if (!found || ::stat(found->c_str(), &status) != 0)
            return std::nullopt;
    }
    return ports::FileStamp{
        .device = status.st_dev,
        .inode = status.st_ino,
        .size = static_cast<std::uint64_t>(status.st_size),
        .modifiedNs = Nanoseconds(status.st_mtim),
        .changedNs = Nanoseconds(status.st_ctim),
    };
}

ports::WriteResult LinuxFiles::ReplaceFile(const std::string& path,
                                           const std::string& content,
                                           unsigned newFileMode)
{
    return ReplaceFileAt(PathForWriting(path), content, newFileMode);
}

ports::WriteResult LinuxFiles::ReplaceFileInPieces(const std::string& path,
                                                   const ports::ContentPieces& next)
{
    return ReplaceFileAt(PathForWriting(path), next, NewFileMode);
}

ports::WriteResult LinuxFiles::CopyFile(const std::string& from, const std::string& to)
{
    const std::optional<ports::FileStamp> source = Stamp(from);
    const std::optional<ports::FileStamp> target = Stamp(to);
    if (source && target && source->device == target->device && source->inode == target->inode)
        return ports::WriteResult::Written;
    const std::optional<std::string> content = Read(from);
    return content ? ReplaceFile(to, *content, NewFileMode) : ports::WriteResult::Failed;
}

bool LinuxFiles::RemoveFile(const std::string& path)
{
    const std::optional<std::string> found = Find(path);
    return found && ::unlink(found->c_str()) == 0;
}

bool LinuxFiles::MakeDirectory(const std::string& path)
{
    constexpr mode_t Mode = 0777; // less what the user's mask takes
    const std::optional<std::string> system = SystemPath(path);
    return IsDirectory(path) || (system && ::mkdir(system->c_str(), Mode) == 0);
}

std::unique_ptr<ports::Files::Lock> LinuxFiles::LockDirectoryOf(const std::string& path)
{
    const std::string directory = SplitPath(PathForWriting(path)).directory;
    const char* const opened = directory.empty() ? "." : directory.c_str();
    FileHandle handle(::open(opened, O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!handle.IsOpen())
        return nullptr;
    while (::flock(handle.Get(), LOCK_EX) != 0) {
        if (errno != EINTR)
            return nullptr;
    }
    return std::make_unique<DirectoryLock>(std::move(handle));
}

std::vector<std::string> LinuxFiles::Walk(const std::string& directory, bool recursive)
{
    const std::optional<std::string> found = Find(directory);
    if (!found)
        return {};
    return WalkFolder(*found,
                      EnsureTrailingBackslash(directory),
                      recursive ? WalkDepth::AllFolders : WalkDepth::OneFolder);
}

std::string LinuxFiles::CurrentDirectory()
{
    std::error_code failed;
    return std::filesystem::current_path(failed).string();
}

bool LinuxFiles::SetCurrentDirectory(const std::string& path)
{
    // Done for each file that is added, and nearly always to a directory of exactly that name.
    if (IsSystemPath(path) && ::chdir(path.c_str()) == 0)
        return true;
    const std::optional<std::string> found = Find(path);
    return found && ::chdir(found->c_str()) == 0;
}

/// The path in the system's own form; nothing if it can name nothing here.
std::optional<std::string> LinuxFiles::SystemPath(const std::string& path) const
{
    if (path.empty() || path.find('\0') != std::string::npos)
        return std::nullopt;
    return ShapeOf(path) == PathShape::Windows ? m_drives.ToPosix(path) : path;
}

/// What exists under that path, with case ignored where need be.
std::optional<std::string> LinuxFiles::Find(const std::string& path) const
{
    const std::optional<std::string> system = SystemPath(path);
    return system ? ResolveIgnoringCase(*system) : std::nullopt;
}

/// Where a file of that path is or would be made: the existing one, else its name in the existing
/// directory. Empty if there is no such directory.
std::string LinuxFiles::PathForWriting(const std::string& path) const
{
    if (const std::optional<std::string> existing = Find(path))
        return *existing;
    const std::optional<std::string> system = SystemPath(path);
    if (!system)
        return {};
    const PathParts parts = SplitPath(*system);
    const std::string folder = parts.directory.empty() ? "./" : parts.directory;
    const std::optional<std::string> found = ResolveIgnoringCase(folder);
    return found ? *found + parts.name : std::string();
}

} // namespace velmo
