#include "Directories.h"

#include "core/PathRules.h"

#include <algorithm>
#include <array>
#include <filesystem>

#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace velmo {

namespace {

constexpr const char* FolderName = "velmo-player";
constexpr mode_t PrivateMode = 0700;

void CreateWithParents(const std::string& directory)
{
    for (std::size_t end = directory.find('/', 1); end != std::string::npos;
         end = directory.find('/', end + 1))
        ::mkdir(directory.substr(0, end).c_str(), PrivateMode);
}

/// Whether files can be made there. The superuser is held to the directory's mode too.
bool IsWritable(const std::string& directory)
{
    constexpr mode_t AllWriteBits = 0222;
    struct stat status = {};
    return ::stat(directory.c_str(), &status) == 0 && S_ISDIR(status.st_mode)
           && (status.st_mode & AllWriteBits) != 0
           && ::faccessat(AT_FDCWD, directory.c_str(), W_OK | X_OK, AT_EACCESS) == 0;
}

std::string DataDirectory(const Environment& environment)
{
    // A relative path in the variable is to be ignored, says the base directory specification.
    const std::string base = environment.xdgDataHome.starts_with('/')
                                 ? environment.xdgDataHome
                                 : environment.home + "/.local/share";
    return EnsureTrailingBackslash(base) + FolderName + "/";
}

} // namespace

Directories FindDirectories(const Environment& environment)
{
    Directories directories;
    directories.program = SplitPath(environment.executable).directory;
    if (!environment.velmoHome.empty()) {
        directories.application = EnsureTrailingBackslash(environment.velmoHome);
    } else if (IsWritable(directories.program) && !IsInstalledCopy(directories.program)) {
        directories.application = directories.program;
        return directories;
    } else {
        directories.application = DataDirectory(environment);
    }
    CreateWithParents(directories.application);
    return directories;
}

bool IsInstalledCopy(const std::string& programDirectory)
{
    constexpr std::array<const char*, 5> SystemFolders{
        "/usr/", "/opt/", "/nix/", "/snap/", "/app/"};
    const std::string directory = EnsureTrailingBackslash(programDirectory);
    if (std::any_of(SystemFolders.begin(), SystemFolders.end(), [&](const char* folder) {
            return directory.starts_with(folder);
        }))
        return true;
    const std::filesystem::path folder(directory.substr(0, directory.size() - 1));
    if (folder.filename() != FolderName)
        return false;
    const std::string parent = folder.parent_path().filename().string();
    const std::string above = folder.parent_path().parent_path().filename().string();
    // lib, lib64, and lib/x86_64-linux-gnu
    return parent.starts_with("lib")
           || (above == "lib" && parent.find("-linux-") != std::string::npos);
}

} // namespace velmo
