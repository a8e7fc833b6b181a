#pragma once

#include "ports/Libraries.h"

#include <functional>
#include <map>
#include <string>

namespace velmo::test {

/// Libraries made of functions of the test.
class FakeLibraries final : public ports::Libraries
{
public:
    /// What a library exports.
    struct Exports
    {
        std::map<std::string, void*> functions;
        void* otherwise = nullptr; ///< for every other name
    };

    std::unique_ptr<Library> Open(const std::string& path) override
    {
        if (onOpen)
            onOpen(path);
        const auto found = libraries.find(path);
        return found == libraries.end() ? nullptr : std::make_unique<Fake>(found->second);
    }

    std::map<std::string, Exports> libraries; ///< by path
    std::function<void(const std::string& path)> onOpen;

private:
    class Fake final : public Library
    {
    public:
        explicit Fake(const Exports& exports)
            : m_exports(exports)
        {}
        void* Symbol(const char* name) override
        {
            const auto found = m_exports.functions.find(name);
            return found == m_exports.functions.end() ? m_exports.otherwise : found->second;
        }

    private:
        const Exports& m_exports;
    };
};

} // namespace velmo::test
