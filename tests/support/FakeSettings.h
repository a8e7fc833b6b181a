#pragma once

#include "core/CaseRules.h"
#include "ports/SettingsFile.h"

#include <functional>
#include <map>
#include <string>

namespace velmo::test {

/// Profile files in memory; sections and keys ignore case, an empty value reads as the fallback.
class FakeSettings final : public ports::SettingsFile
{
public:
    std::string ProfileRead(const std::string& section,
                            const std::string& key,
                            const std::string& fallback,
                            const std::string& path) override
    {
        const auto value = m_values.find(Address(section, key, path));
        return value == m_values.end() || value->second.empty() ? fallback : value->second;
    }

    void ProfileWrite(const std::string& section,
                      const std::string& key,
                      const std::string& value,
                      const std::string& path) override
    {
        m_values[Address(section, key, path)] = value;
        if (onWrite)
            onWrite(section + " " + key + "=" + value);
    }

    std::function<void(const std::string&)> onWrite; ///< told of each write, in words

private:
    static std::string Address(const std::string& section,
                               const std::string& key,
                               const std::string& path)
    {
        return path + '\n' + FoldCase(section) + '\n' + FoldCase(key);
    }

    std::map<std::string, std::string> m_values;
};

} // namespace velmo::test
