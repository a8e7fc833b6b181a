#pragma once

#include "DriveMap.h"

#include "ports/Files.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmo {

/// The file system of this machine. Holds no state but the drive map.
class LinuxFiles final : public ports::Files
{
public:
    /// `drives` is the drive map's text, as `DriveMap` takes it; empty for none.
    explicit LinuxFiles(std::string_view drives = {});

    std::string DirSearch(const std::string& path) override;
    bool IsDirectory(const std::string& path) override;
    std::string ResolveForOpen(const std::string& path) override;
    std::optional<std::string> Read(const std::string& path) override;
    std::optional<std::string> ReadStart(const std::string& path, std::size_t most) override;
    std::optional<ports::FileStamp> Stamp(const std::string& path) override;
    [[nodiscard]] ports::WriteResult ReplaceFile(const std::string& path,
                                                 const std::string& content,
                                                 unsigned newFileMode) override;
    [[nodiscard]] ports::WriteResult ReplaceFileInPieces(const std::string& path,
                                                         const ports::ContentPieces& next) override;
    [[nodiscard]] ports::WriteResult CopyFile(const std::string& from,
                                              const std::string& to) override;
    bool RemoveFile(const std::string& path) override;
    bool MakeDirectory(const std::string& path) override;
    [[nodiscard]] std::unique_ptr<Lock> LockDirectoryOf(const std::string& path) override;
    std::vector<std::string> Walk(const std::string& directory, bool recursive) override;
    std::string CurrentDirectory() override;
    bool SetCurrentDirectory(const std::string& path) override;

private:
    std::optional<std::string> SystemPath(const std::string& path) const;
    std::optional<std::string> Find(const std::string& path) const;
    std::string PathForWriting(const std::string& path) const;

    DriveMap m_drives;
};

} // namespace velmo
