#include "InstancePaths.h"

#include "core/PathRules.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <utility>

#include <sys/stat.h>
#include <system_error>

namespace velmo {

namespace {

constexpr const char* SocketEnding = ".sock";

/// What fits into the address of a socket, without the NUL.
constexpr std::size_t LongestSocketPath = 107;

/// As many characters as the longest id of a process has.
constexpr std::size_t LongestProcessId = 10;

/// Creates the directory if need be. False if it is another user's, a link or no directory.
bool MakePrivate(const std::string& directory, unsigned userId)
{
    constexpr mode_t PrivateMode = 0700;
    constexpr mode_t OthersBits = 0077;
    ::mkdir(directory.c_str(), PrivateMode);
    struct stat status = {};
    if (::lstat(directory.c_str(), &status) != 0 || !S_ISDIR(status.st_mode)
        || status.st_uid != userId)
        return false;
    return (status.st_mode & OthersBits) == 0 || ::chmod(directory.c_str(), PrivateMode) == 0;
}

/// FNV-1a, 64 bits, in hex digits.
std::string HashOf(const std::string& text)
{
    std::uint64_t hash = 0xcbf29ce484222325U;
    for (const char c : text)
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3U;
    std::string digits;
    for (unsigned shift = 64; shift > 0; shift -= 4)
        digits += "0123456789abcdef"[(hash >> (shift - 4)) & 0xFU];
    return digits;
}

std::optional<std::string> MutexDirectory(const Environment& environment,
                                          const std::string& lastResort)
{
    if (!environment.velmoHome.empty()) {
        std::error_code failed;
        std::filesystem::create_directories(environment.velmoHome, failed);
        const std::string directory = EnsureTrailingBackslash(environment.velmoHome) + ".run";
        if (!MakePrivate(directory, environment.userId))
            return std::nullopt;
        return directory;
    }
    if (!environment.xdgRuntimeDir.empty()) {
        const std::string directory =
            EnsureTrailingBackslash(environment.xdgRuntimeDir) + "velmo-player";
        if (MakePrivate(directory, environment.userId))
            return directory;
    }
    if (!MakePrivate(lastResort, environment.userId))
        return std::nullopt;
    return lastResort;
}

bool IsSocketName(const std::string& name, const std::string& stem)
{
    const std::string ending = SocketEnding;
    if (!name.starts_with(stem) || !name.ends_with(ending)
        || name.size() <= stem.size() + ending.size())
        return false;
    return std::all_of(name.begin() + static_cast<std::ptrdiff_t>(stem.size()),
                       name.end() - static_cast<std::ptrdiff_t>(ending.size()),
                       [](char c) { return c >= '0' && c <= '9'; });
}

} // namespace

std::string InstancePaths::SocketOf(unsigned processId) const
{
    return socketStem + std::to_string(processId) + SocketEnding;
}

std::vector<std::string> InstancePaths::Sockets() const
{
    const PathParts stem = SplitPath(socketStem);
    std::vector<std::pair<std::filesystem::file_time_type, std::string>> found;
    std::error_code failed;
    for (std::filesystem::directory_iterator entry(stem.directory, failed), end;
         !failed && entry != end;
         entry.increment(failed)) {
        std::error_code vanished;
        const auto time = entry->last_write_time(vanished);
        if (!vanished && IsSocketName(entry->path().filename().string(), stem.name))
            found.emplace_back(time, entry->path().string());
    }
    std::sort(found.rbegin(), found.rend());
    std::vector<std::string> paths;
    paths.reserve(found.size());
    for (auto& [time, path] : found)
        paths.push_back(std::move(path));
    return paths;
}

std::optional<InstancePaths> PrepareInstancePaths(const Environment& environment)
{
    const std::string lastResort = EnsureTrailingBackslash(environment.temporaryDirectory)
                                   + "velmo-player-" + std::to_string(environment.userId);
    const std::optional<std::string> directory = MutexDirectory(environment, lastResort);
    if (!directory)
        return std::nullopt;
    InstancePaths paths{*directory + "/", *directory + "/"};
    const std::size_t longest =
        paths.directory.size() + LongestProcessId + std::string(SocketEnding).size();
    if (longest > LongestSocketPath) {
        if (!MakePrivate(lastResort, environment.userId))
            return std::nullopt;
        paths.socketStem = lastResort + "/" + HashOf(paths.directory) + "-";
    }
    return paths;
}

} // namespace velmo
