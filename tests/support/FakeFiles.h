#pragma once

#include "core/PathRules.h"
#include "ports/Files.h"

#include <functional>
#include <map>
#include <set>
#include <string>

namespace velmo::test {

/// A file system in memory: files with their content, and directories by name without a separator
/// at the end. There is no search without regard to case, no link and no pattern.
class FakeFiles final : public ports::Files
{
public:
    std::map<std::string, std::string> files;
    std::set<std::string> directories;
    std::string current = "/start";
    bool writesFail = false;
    std::function<void(const std::string&)> onReplace; ///< told of each file that is to be written

    std::string DirSearch(const std::string& path) override
    {
        return files.contains(path) ? SplitPath(path).name : std::string();
    }
    bool IsDirectory(const std::string& path) override { return directories.contains(path); }
    std::string ResolveForOpen(const std::string& path) override { return path; }
    std::optional<std::string> Read(const std::string& path) override
    {
        const auto file = files.find(path);
        return file == files.end() ? std::nullopt : std::optional(file->second);
    }
    std::optional<std::string> ReadStart(const std::string& path, std::size_t most) override
    {
        const std::optional<std::string> content = Read(path);
        return content ? std::optional(content->substr(0, most)) : std::nullopt;
    }
    std::optional<ports::FileStamp> Stamp(const std::string& path) override
    {
        return files.contains(path) ? std::optional(ports::FileStamp{}) : std::nullopt;
    }
    ports::WriteResult ReplaceFile(const std::string& path,
                                   const std::string& content,
                                   unsigned) override
    {
        if (onReplace)
            onReplace(path);
        if (writesFail)
            return ports::WriteResult::Failed;
        files[path] = content;
        return ports::WriteResult::Written;
    }
    ports::WriteResult ReplaceFileInPieces(const std::string& path,
                                           const ports::ContentPieces& next) override
    {
        std::string content;
        for (std::string_view piece = next(); !piece.empty(); piece = next())
            content += piece;
        return ReplaceFile(path, content, 0);
    }
    ports::WriteResult CopyFile(const std::string& from, const std::string& to) override
    {
        const auto source = Read(from);
        return source ? ReplaceFile(to, *source, 0) : ports::WriteResult::Failed;
    }
    bool RemoveFile(const std::string& path) override { return files.erase(path) > 0; }
    bool MakeDirectory(const std::string& path) override
    {
        directories.insert(path);
        return true;
    }
    std::unique_ptr<Lock> LockDirectoryOf(const std::string&) override { return nullptr; }
    std::vector<std::string> Walk(const std::string& directory, bool recursive) override
    {
        std::vector<std::string> found;
        for (const auto& [path, content] : files)
            if (path.starts_with(directory)
                && (recursive || path.find('/', directory.size()) == std::string::npos))
                found.push_back(path);
        return found;
    }
    std::string CurrentDirectory() override { return current; }
    bool SetCurrentDirectory(const std::string& path) override
    {
        current = path;
        return true;
    }
};

} // namespace velmo::test
