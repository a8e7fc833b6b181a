#include "PathRules.h"

#include "TextRules.h"

#include <utility>

namespace velmo {

PathShape ShapeOf(std::string_view path)
{
    if (path.empty() || path.find('/') != std::string_view::npos)
        return PathShape::Posix;
    const std::size_t second = CharacterAt(path, 0).length;
    const bool hasDrive = second < path.size() && path[second] == ':';
    return hasDrive || path.find('\\') != std::string_view::npos ? PathShape::Windows
                                                                 : PathShape::Posix;
}

char SeparatorOf(std::string_view path)
{
    return ShapeOf(path) == PathShape::Windows ? '\\' : '/';
}

PathParts SplitPath(std::string_view path)
{
    const std::size_t last = path.rfind(SeparatorOf(path));
    const std::size_t cut = last == std::string_view::npos ? 0 : last + 1;
    return {std::string(path.substr(0, cut)), std::string(path.substr(cut))};
}

std::string EnsureTrailingBackslash(std::string path)
{
    const char separator = SeparatorOf(path);
    if (!path.ends_with(separator))
        path += separator;
    return path;
}

std::string FileDirectory(const std::string& path, ports::Files& files)
{
    std::string directory = SplitPath(path).directory;
    if (directory.empty())
        directory = EnsureTrailingBackslash(files.CurrentDirectory());
    return ShapeOf(directory) == PathShape::Windows ? UpperCase(directory) : directory;
}

bool FileExists(const std::string& path, ports::Files& files)
{
    return !files.DirSearch(path).empty();
}

} // namespace velmo
