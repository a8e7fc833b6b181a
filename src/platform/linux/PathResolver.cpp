#include "PathResolver.h"

#include "core/CaseRules.h"

#include <dirent.h>

#include <memory>

#include <sys/stat.h>

namespace velmo {

namespace {

struct CloseDirectory
{
    void operator()(DIR* directory) const { ::closedir(directory); }
};

bool IsDots(std::string_view name)
{
    return name == "." || name == "..";
}

} // namespace

FileKind KindOfFile(const std::string& path)
{
    struct stat status = {};
    if (path.find('\0') != std::string::npos || ::stat(path.c_str(), &status) != 0)
        return FileKind::None;
    if (S_ISDIR(status.st_mode))
        return FileKind::Directory;
    return S_ISREG(status.st_mode) ? FileKind::Regular : FileKind::Other;
}

std::optional<std::string> FirstNameIn(const std::string& directory,
                                       const std::function<bool(const std::string&)>& wanted)
{
    const std::unique_ptr<DIR, CloseDirectory> stream(::opendir(directory.c_str()));
    std::optional<std::string> first;
    if (stream == nullptr)
        return first;
    // Each stream is read by one thread only.
    while (const dirent* entry = ::readdir(stream.get())) { // NOLINT(concurrency-mt-unsafe)
        const std::string name(static_cast<const char*>(entry->d_name));
        if (!IsDots(name) && (!first || name < *first) && wanted(name))
            first = name;
    }
    return first;
}

std::optional<std::string> ResolveIgnoringCase(const std::string& path)
{
    if (path.empty() || path.find('\0') != std::string::npos)
        return std::nullopt;
    if (KindOfFile(path) != FileKind::None)
        return path;
    std::string found;
    for (std::size_t at = 0; at < path.size();) {
        if (path[at] == '/') {
            found += path[at++];
            continue;
        }
        const std::size_t end = std::min(path.find('/', at), path.size());
        const std::string component = path.substr(at, end - at);
        if (KindOfFile(found + component) != FileKind::None) {
            found += component;
        } else {
            const auto match = FirstNameIn(found.empty() ? "." : found, [&](const auto& name) {
                return EqualsIgnoringCase(name, component)
                       && KindOfFile(found + name) != FileKind::None;
            });
            if (!match)
                return std::nullopt;
            found += *match;
        }
        at = end;
    }
    // A last separator behind a file: the pieces exist, the whole does not.
    return KindOfFile(found) == FileKind::None ? std::nullopt : std::optional(found);
}

} // namespace velmo
