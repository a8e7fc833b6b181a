/// The plugins that are loaded.
#pragma once

#include "PluginLibrary.h"

#include "decode/DecoderList.h"

#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace velmo::engine {

/// Loaded plugins by their handles, in the order of loading, and the list of all decoders.
///
/// Any thread. Its lock is held for a few instructions: libraries are mapped and unmapped outside
/// of it.
class PluginRegistry
{
public:
    using Decoders = std::shared_ptr<const std::vector<DecoderEntry>>;
    using Libraries = std::vector<std::shared_ptr<const PluginLibrary>>;

    PluginRegistry();

    /// Loads the library at `path` (bytes; a relative one is taken from the current directory) and
    /// gives its handle. Fails with 2, 14 and 41 as `BASS_PluginLoad` tells.
    Result<DWORD> Load(const std::string& path);

    /// Valid until the plugin is taken; null for a bad handle.
    const BASS_PLUGININFO* Info(DWORD handle) const;

    /// Whether `library` is the one of a plugin that is loaded.
    bool IsLoaded(const std::shared_ptr<const void>& library) const;

    /// Takes out the plugin of `handle`, all for 0. Gives the references, empty for a bad handle;
    /// what was listed before may still hold others.
    Libraries Take(DWORD handle);

    /// The engine's own decoders and those of the plugins loaded by now.
    Decoders List() const;

private:
    struct Plugin
    {
        DWORD handle = 0;
        std::shared_ptr<const PluginLibrary> library;
    };

    bool Holds(const FileIdentity& identity) const;
    static Decoders MakeList(const std::vector<Plugin>& plugins);

    std::mutex m_loading; ///< one loads at a time; taken before m_mutex
    mutable std::mutex m_mutex;
    // Guarded by m_mutex:
    std::vector<Plugin> m_plugins;
    Decoders m_list;
    DWORD m_handles = 0; ///< given so far in this process
};

} // namespace velmo::engine
