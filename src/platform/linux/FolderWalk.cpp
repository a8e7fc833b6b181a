#include "FolderWalk.h"

#include "core/CaseRules.h"

#include <dirent.h>

#include <algorithm>
#include <memory>
#include <set>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>

// The folders that are still to be read lie on a stack of our own, the next one on top: a folder's
// files come first, then its sub-folders in order, each with all that lies below it. Every folder
// is listed once and no listing is begun again.

namespace velmo {

namespace {

struct CloseDirectory
{
    void operator()(DIR* directory) const { ::closedir(directory); }
};

using Directory = std::unique_ptr<DIR, CloseDirectory>;

struct Folder
{
    std::string path;
    std::string shownAs;
};

/// A name with the text that it is sorted by.
struct SortedName
{
    std::string folded;
    std::string name;

    // The check takes the 0 of the generated comparison for a pointer.
    auto operator<=>(const SortedName&) const = default; // NOLINT(modernize-use-nullptr)
};

struct Listing
{
    std::vector<SortedName> files;
    std::vector<SortedName> folders;
};

enum class EntryKind
{
    File,
    Folder,
    Neither,
};

EntryKind KindOfEntry(DIR* directory, const dirent& entry)
{
    if (entry.d_type == DT_REG)
        return EntryKind::File;
    if (entry.d_type == DT_DIR)
        return EntryKind::Folder;
    if (entry.d_type != DT_LNK && entry.d_type != DT_UNKNOWN)
        return EntryKind::Neither;
    struct stat status = {};
    if (::fstatat(::dirfd(directory), static_cast<const char*>(entry.d_name), &status, 0) != 0)
        return EntryKind::Neither;
    if (S_ISDIR(status.st_mode))
        return EntryKind::Folder;
    return S_ISREG(status.st_mode) ? EntryKind::File : EntryKind::Neither;
}

Listing ListFolder(DIR* directory)
{
    Listing listing;
    // Each stream is read by one thread only.
    while (const dirent* entry = ::readdir(directory)) { // NOLINT(concurrency-mt-unsafe)
        const std::string name(static_cast<const char*>(entry->d_name));
        if (name.starts_with('.'))
            continue;
        const EntryKind kind = KindOfEntry(directory, *entry);
        if (kind == EntryKind::File)
            listing.files.push_back({FoldCase(name), name});
        else if (kind == EntryKind::Folder)
            listing.folders.push_back({FoldCase(name), name});
    }
    std::sort(listing.files.begin(), listing.files.end());
    std::sort(listing.folders.rbegin(), listing.folders.rend());
    return listing;
}

} // namespace

std::vector<std::string> WalkFolder(const std::string& directory,
                                    const std::string& shownAs,
                                    WalkDepth depth)
{
    std::vector<std::string> found;
    std::set<std::pair<dev_t, ino_t>> visited;
    std::vector<Folder> waiting{
        {directory, shownAs}
    };
    const char separator = shownAs.empty() ? '/' : shownAs.back();
    while (!waiting.empty()) {
        const Folder folder = std::move(waiting.back());
        waiting.pop_back();
        const Directory stream(::opendir(folder.path.c_str()));
        struct stat status = {};
        if (stream == nullptr || ::fstat(::dirfd(stream.get()), &status) != 0
            || !visited.insert({status.st_dev, status.st_ino}).second)
            continue;
        const Listing listing = ListFolder(stream.get());
        for (const SortedName& file : listing.files)
            found.push_back(folder.shownAs + file.name);
        if (depth == WalkDepth::OneFolder)
            break;
        for (const SortedName& sub : listing.folders)
            waiting.push_back(
                {folder.path + "/" + sub.name, folder.shownAs + sub.name + separator});
    }
    return found;
}

} // namespace velmo
