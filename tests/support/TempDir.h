#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace velmo::test {

/// A directory of its own for one test, gone with all that is in it when the test ends.
class TempDir final
{
public:
    TempDir()
    {
        std::string pattern =
            std::filesystem::temp_directory_path().string() + "/velmo-test-XXXXXX";
        m_path = ::mkdtemp(pattern.data()) == nullptr ? std::string() : pattern;
    }

    ~TempDir()
    {
        std::error_code failed;
        if (!m_path.empty())
            std::filesystem::remove_all(m_path, failed);
    }

    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    /// Path of `name` in the directory; without a name the directory itself, without a separator.
    std::string operator()(const std::string& name = {}) const
    {
        return name.empty() ? m_path : m_path + "/" + name;
    }

    /// Makes a file, with the folders that lead to it.
    std::string Write(const std::string& name, const std::string& content = {}) const
    {
        std::string path = (*this)(name);
        std::filesystem::create_directories(std::filesystem::path(path).parent_path());
        std::ofstream(path, std::ios::binary) << content;
        return path;
    }

    /// The whole content of a file; empty if there is none.
    std::string Read(const std::string& name) const
    {
        std::ostringstream content;
        content << std::ifstream((*this)(name), std::ios::binary).rdbuf();
        return content.str();
    }

private:
    std::string m_path;
};

} // namespace velmo::test
