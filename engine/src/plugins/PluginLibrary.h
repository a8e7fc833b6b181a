/// The shared library of a plugin, mapped.
#pragma once

#include "bass.h"
#include "bass_plugin.h"

#include "decode/Result.h"

#include <compare>
#include <memory>
#include <string>

#include <sys/types.h>

namespace velmo::engine {

/// Which file it is, whatever its path.
struct FileIdentity
{
    dev_t device = 0;
    ino_t inode = 0;

    auto operator<=>(const FileIdentity&) const = default;
};

/// One reference to a mapped plugin; the last one that goes unmaps it. The registry holds one, and
/// so does every open source. Never let go of by the thread that mixes: unmapping waits and frees.
class PluginLibrary
{
public:
    /// Identity of the file at `path`; fails with 2 for whatever is no readable regular file.
    static Result<FileIdentity> Identify(const std::string& path);

    /// Maps the file at `path`, absolute, whose identity is `identity`. Fails with 41 for what is
    /// no shared library, lacks others that it needs, or has no usable table; it's unmapped then.
    /// Runs the library's constructors. Any thread.
    static Result<std::shared_ptr<const PluginLibrary>> Load(const std::string& path,
                                                             const FileIdentity& identity);

    PluginLibrary(const PluginLibrary&) = delete;
    PluginLibrary& operator=(const PluginLibrary&) = delete;
    ~PluginLibrary();

    const FileIdentity& Identity() const noexcept { return m_identity; }
    const BASS_DECODER& Decoder() const noexcept { return *m_table->decoder; }
    /// Points into the library and to this object.
    const BASS_PLUGININFO& Info() const noexcept { return m_info; }

private:
    PluginLibrary(void* mapped, const FileIdentity& identity) noexcept;
    bool FindTable() noexcept;

    void* const m_mapped;
    const FileIdentity m_identity;
    const BASS_PLUGIN* m_table = nullptr;
    BASS_PLUGININFO m_info = {};
};

} // namespace velmo::engine
