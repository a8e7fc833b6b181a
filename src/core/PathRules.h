#pragma once

#include "ports/Files.h"

#include <string>
#include <string_view>

namespace velmo {

/// Whose rules a path follows. It is decided from the text alone, never from the disk.
enum class PathShape
{
    Posix,   ///< "/" parts components, "\" is an ordinary character
    Windows, ///< "\" parts components
};

/// Windows-shaped is a text without "/" that holds "\" or has ":" as its second character; all else
/// is POSIX-shaped.
PathShape ShapeOf(std::string_view path);

/// The character that parts the components of that path.
char SeparatorOf(std::string_view path);

/// A path cut behind its last separator.
struct PathParts
{
    std::string directory; ///< with the separator; empty if the path has none
    std::string name;      ///< may be empty
};

PathParts SplitPath(std::string_view path);

/// The text with its separator at the end, unless it ends so already. Empty text gives "/".
std::string EnsureTrailingBackslash(std::string path);

/// Directory part of a path with its separator; the current directory for a path without separator.
/// Windows-shaped text comes in upper case; POSIX-shaped text keeps its case, since it names
/// something else otherwise.
std::string FileDirectory(const std::string& path, ports::Files& files);

/// Whether `path` leads to a file, or to anything that is no directory; `*` and `?` match as in
/// `DirSearch`.
bool FileExists(const std::string& path, ports::Files& files);

} // namespace velmo
