#include "PluginLibrary.h"

#include "PluginTable.h"

#include <elf.h>
#include <link.h>

#include <dlfcn.h>
#include <sys/stat.h>
#include <unistd.h>

namespace velmo::engine {

namespace {

constexpr const char* TableName = "BASS_PluginTable";

/// How many bytes the library says the object at `address` has; 0 where it is no object.
std::size_t ObjectBytes(const void* address) noexcept
{
    Dl_info info = {};
    void* extra = nullptr;
    if (dladdr1(address, &info, &extra, RTLD_DL_SYMENT) == 0 || extra == nullptr)
        return 0;
    const auto* const symbol = static_cast<const ElfW(Sym)*>(extra);
    const bool isObject = ELF64_ST_TYPE(symbol->st_info) == STT_OBJECT;
    return isObject && info.dli_saddr == address ? symbol->st_size : 0;
}

} // namespace

Result<FileIdentity> PluginLibrary::Identify(const std::string& path)
{
    struct stat status = {};
    if (::stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)
        || ::access(path.c_str(), R_OK) != 0)
        return Result<FileIdentity>::Failure(BASS_ERROR_FILEOPEN);
    return {
        .value = {.device = status.st_dev, .inode = status.st_ino}
    };
}

Result<std::shared_ptr<const PluginLibrary>> PluginLibrary::Load(const std::string& path,
                                                                 const FileIdentity& identity)
{
    using Loaded = Result<std::shared_ptr<const PluginLibrary>>;
    void* const mapped = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (mapped == nullptr)
        return Loaded::Failure(BASS_ERROR_FILEFORM);
    const std::shared_ptr<PluginLibrary> library(new PluginLibrary(mapped, identity));
    if (!library->FindTable())
        return Loaded::Failure(BASS_ERROR_FILEFORM);
    return {.value = library};
}

PluginLibrary::PluginLibrary(void* mapped, const FileIdentity& identity) noexcept
    : m_mapped(mapped)
    , m_identity(identity)
{}

PluginLibrary::~PluginLibrary()
{
    dlclose(m_mapped);
}

bool PluginLibrary::FindTable() noexcept
{
    const void* const symbol = dlsym(m_mapped, TableName);
    const auto* const table = static_cast<const BASS_PLUGIN*>(symbol);
    if (symbol == nullptr || !IsUsablePlugin(table, ObjectBytes(symbol)))
        return false;
    m_table = table;
    m_info = {.version = table->version, .formatc = table->formatCount, .formats = table->formats};
    return true;
}

} // namespace velmo::engine
