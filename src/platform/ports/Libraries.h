#pragma once

#include <memory>
#include <string>

namespace velmo::ports {

/// Shared libraries that are opened at run time.
class Libraries
{
public:
    virtual ~Libraries() = default;

    /// An open library. It is closed when this is destroyed, so the addresses it gave must not
    /// outlive it.
    class Library
    {
    public:
        virtual ~Library() = default;

        /// Address of an exported function or object; null if the library has none of that name.
        virtual void* Symbol(const char* name) = 0;
    };

    /// Opens the library at that absolute path; null if there is none that can be opened.
    [[nodiscard]] virtual std::unique_ptr<Library> Open(const std::string& path) = 0;
};

} // namespace velmo::ports
