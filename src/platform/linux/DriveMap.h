#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace velmo {

/// Where drive letters lie in the file system.
class DriveMap final
{
public:
    /// `text` is "c=/mnt/c;d=/media/d"; letters in either case, parts of any other form are passed
    /// over.
    explicit DriveMap(std::string_view text);

    /// The file system's path for a Windows-shaped one: directory of the drive, rest with "/" for
    /// "\". Nothing if it has no drive letter or the map lacks that drive. The case of its
    /// components may differ from the disk's.
    std::optional<std::string> ToPosix(std::string_view windowsPath) const;

private:
    std::map<char, std::string> m_directories;
};

} // namespace velmo
