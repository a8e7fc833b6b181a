#pragma once

#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

namespace velmo::test {

/// Sets, or unsets, a variable of the environment as long as it lives.
class Environment
{
public:
    Environment(std::string name, const std::optional<std::string>& value)
        : m_name(std::move(name))
    {
        if (const char* const before = std::getenv(m_name.c_str()))
            m_before = before;
        Put(value);
    }
    ~Environment() { Put(m_before); }
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;

private:
    void Put(const std::optional<std::string>& value) const
    {
        if (value)
            setenv(m_name.c_str(), value->c_str(), 1);
        else
            unsetenv(m_name.c_str());
    }

    std::string m_name;
    std::optional<std::string> m_before;
};

} // namespace velmo::test
