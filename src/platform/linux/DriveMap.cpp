#include "DriveMap.h"

#include "core/CaseRules.h"

#include <algorithm>

namespace velmo {

DriveMap::DriveMap(std::string_view text)
{
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(';'), text.size());
        const std::string_view part = text.substr(0, end);
        if (part.size() > 2 && part[1] == '=' && part[2] == '/')
            m_directories[AsciiLower(part[0])] = part.substr(2);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

std::optional<std::string> DriveMap::ToPosix(std::string_view windowsPath) const
{
    if (windowsPath.size() < 2 || windowsPath[1] != ':')
        return std::nullopt;
    const auto drive = m_directories.find(AsciiLower(windowsPath[0]));
    if (drive == m_directories.end())
        return std::nullopt;
    std::string rest(windowsPath.substr(2));
    std::replace(rest.begin(), rest.end(), '\\', '/');
    if (!rest.starts_with('/'))
        rest.insert(0, 1, '/');
    return drive->second + rest;
}

} // namespace velmo
