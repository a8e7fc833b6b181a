#include "PluginRegistry.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <utility>

namespace velmo::engine {

namespace {

/// The upper bits of a plugin's handle; those of channels and effects are others.
constexpr DWORD HandleKind = 4U << 28U;
constexpr DWORD MaxCount = (1U << 28U) - 1;

/// Empty if there is no such file.
std::string AbsolutePath(const std::string& path)
{
    const std::unique_ptr<char, void (*)(void*)> resolved(realpath(path.c_str(), nullptr),
                                                          &std::free);
    return resolved == nullptr ? std::string() : std::string(resolved.get());
}

} // namespace

PluginRegistry::PluginRegistry()
    : m_list(MakeList({}))
{}

Result<DWORD> PluginRegistry::Load(const std::string& path)
{
    const std::string absolute = AbsolutePath(path);
    const Result<FileIdentity> identity = PluginLibrary::Identify(absolute);
    if (!identity)
        return Result<DWORD>::Failure(identity.error);
    const std::lock_guard loading(m_loading);
    if (Holds(identity.value))
        return Result<DWORD>::Failure(BASS_ERROR_ALREADY);
    auto library = PluginLibrary::Load(absolute, identity.value);
    if (!library)
        return Result<DWORD>::Failure(library.error);

    const std::lock_guard lock(m_mutex);
    if (m_handles == MaxCount)
        return Result<DWORD>::Failure(BASS_ERROR_UNKNOWN);
    std::vector<Plugin> plugins = m_plugins;
    plugins.push_back({.handle = HandleKind | (m_handles + 1), .library = library.value});
    m_list = MakeList(plugins);
    m_plugins = std::move(plugins);
    return {.value = HandleKind | ++m_handles};
}

const BASS_PLUGININFO* PluginRegistry::Info(DWORD handle) const
{
    const std::lock_guard lock(m_mutex);
    const auto found = std::ranges::find(m_plugins, handle, &Plugin::handle);
    return found == m_plugins.end() ? nullptr : &found->library->Info();
}

bool PluginRegistry::IsLoaded(const std::shared_ptr<const void>& library) const
{
    const std::lock_guard lock(m_mutex);
    return std::ranges::any_of(m_plugins,
                               [&](const Plugin& plugin) { return plugin.library == library; });
}

PluginRegistry::Libraries PluginRegistry::Take(DWORD handle)
{
    Libraries taken;
    Decoders before; // goes after the lock
    const std::lock_guard lock(m_mutex);
    std::vector<Plugin> kept;
    for (const Plugin& plugin : m_plugins) {
        if (handle == 0 || plugin.handle == handle)
            taken.push_back(plugin.library);
        else
            kept.push_back(plugin);
    }
    if (taken.empty())
        return taken;
    before = std::exchange(m_list, MakeList(kept));
    m_plugins = std::move(kept);
    return taken;
}

PluginRegistry::Decoders PluginRegistry::List() const
{
    const std::lock_guard lock(m_mutex);
    return m_list;
}

bool PluginRegistry::Holds(const FileIdentity& identity) const
{
    const std::lock_guard lock(m_mutex);
    return std::ranges::any_of(
        m_plugins, [&](const Plugin& plugin) { return plugin.library->Identity() == identity; });
}

PluginRegistry::Decoders PluginRegistry::MakeList(const std::vector<Plugin>& plugins)
{
    std::vector<DecoderEntry> entries;
    entries.reserve(plugins.size());
    for (const Plugin& plugin : plugins)
        entries.push_back({.decoder = &plugin.library->Decoder(), .owner = plugin.library});
    return std::make_shared<const std::vector<DecoderEntry>>(ListDecoders(entries));
}

} // namespace velmo::engine
