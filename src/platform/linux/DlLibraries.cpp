#include "DlLibraries.h"

#include <dlfcn.h>

namespace velmo {

namespace {

struct CloseLibrary
{
    void operator()(void* handle) const { ::dlclose(handle); }
};

class DlLibrary final : public ports::Libraries::Library
{
public:
    explicit DlLibrary(void* handle)
        : m_handle(handle)
    {}

    void* Symbol(const char* name) override { return ::dlsym(m_handle.get(), name); }

private:
    std::unique_ptr<void, CloseLibrary> m_handle;
};

} // namespace

std::unique_ptr<ports::Libraries::Library> DlLibraries::Open(const std::string& path)
{
    if (!path.starts_with('/') || path.find('\0') != std::string::npos)
        return nullptr;
    void* const handle = ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    return handle == nullptr ? nullptr : std::make_unique<DlLibrary>(handle);
}

} // namespace velmo
