#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmo::ports {

/// What tells one state of a file from another without reading it.
struct FileStamp
{
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::uint64_t size = 0;
    std::int64_t modifiedNs = 0; ///< last change of the content, nanoseconds
    std::int64_t changedNs = 0;  ///< last change of content or attributes, nanoseconds

    bool operator==(const FileStamp&) const = default;
};

/// How `ReplaceFile` ended. On anything but `Written` the file is as it was before.
enum class WriteResult
{
    Written,
    Failed,
};

/// Makes a long content while it is written: gives its next piece, which lasts until the next call;
/// an empty one at the end.
using ContentPieces = std::function<std::string_view()>;

/// The file system as the program's logic sees it.
/// Paths are bytes. A path with a drive letter or "\" is opened through the drive map; every other
/// path is the file system's own. Reading operations find a file whose name differs in case only,
/// if no exact one exists. All calls come from the user-interface thread; none throws.
class Files
{
public:
    virtual ~Files() = default;

    /// Name of the first file that `path` matches, without its directory; empty if there is none.
    /// `*` and `?` in the last component match as usual, ignoring case, unless a file of exactly
    /// that name exists. Directories never match, nor does a path that ends in a separator.
    virtual std::string DirSearch(const std::string& path) = 0;

    /// Whether `path` names an existing directory (links are followed).
    virtual bool IsDirectory(const std::string& path) = 0;

    /// The path under which the file that `path` means can be opened; `path` itself if none exists.
    virtual std::string ResolveForOpen(const std::string& path) = 0;

    /// The whole content, or nothing if the file is absent, a directory or unreadable.
    virtual std::optional<std::string> Read(const std::string& path) = 0;

    /// Its first bytes, at most so many; all of them if the file has less.
    virtual std::optional<std::string> ReadStart(const std::string& path, std::size_t most) = 0;

    /// The file's present state, or nothing if it is absent.
    virtual std::optional<FileStamp> Stamp(const std::string& path) = 0;

    /// Replaces the whole content of `path`, or leaves the old file as it was: temporary file in
    /// the same directory, flush, fsync, rename. A link is followed to its target, an existing
    /// file's mode is kept, a new file gets `newFileMode`; a file without write permission is a
    /// failure, and what is no regular file is written straight.
    [[nodiscard]] virtual WriteResult ReplaceFile(const std::string& path,
                                                  const std::string& content,
                                                  unsigned newFileMode = 0644) = 0;

    /// The same with a content that `next` gives piece by piece, and the mode 0644 for a new file.
    /// What `next` throws passes through; the file is then as it was before.
    [[nodiscard]] virtual WriteResult ReplaceFileInPieces(const std::string& path,
                                                          const ContentPieces& next) = 0;

    /// Replaces `to` by the content of `from`, as `ReplaceFile` does. A file that is copied onto
    /// itself stays untouched.
    [[nodiscard]] virtual WriteResult CopyFile(const std::string& from, const std::string& to) = 0;

    /// Removes a file; false if it is absent or may not be removed.
    virtual bool RemoveFile(const std::string& path) = 0;

    /// Makes a directory, whose parent must exist. True if it is there afterwards.
    virtual bool MakeDirectory(const std::string& path) = 0;

    /// Holds an advisory lock until it is destroyed.
    class Lock
    {
    public:
        virtual ~Lock() = default;
    };

    /// Waits for the advisory lock of the directory in which `path` lies and takes it. Nothing if
    /// the directory cannot be opened.
    [[nodiscard]] virtual std::unique_ptr<Lock> LockDirectoryOf(const std::string& path) = 0;

    /// The files below `directory`, as full paths: those of the directory first, by name and
    /// ignoring case, then those of each sub-directory in the same order. Names that begin with "."
    /// are left out; each directory is visited once, by device and inode; what cannot be read gives
    /// nothing.
    virtual std::vector<std::string> Walk(const std::string& directory, bool recursive) = 0;

    /// The process's current directory, without a separator at its end.
    virtual std::string CurrentDirectory() = 0;

    /// Changes the process's current directory; false if that is not possible.
    virtual bool SetCurrentDirectory(const std::string& path) = 0;
};

} // namespace velmo::ports
