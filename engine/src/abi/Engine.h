#pragma once

#include "bass.h"
#include "bass_effect.h"

#include "channels/Channel.h"
#include "channels/Session.h"
#include "decode/Result.h"
#include "decode/Source.h"
#include "device/DeviceDescription.h"
#include "plugins/PluginRegistry.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <unordered_map>
#include <vector>

namespace velmo::engine {

/// The device, the options and the table of open channels: what the C functions work on. Any
/// thread, but `Quiesce`.
///
/// One lock guards it all, held for a few instructions at a time: never while a file is opened, a
/// device is waited for, or a channel is destroyed. A second one lets `Init` and `Free` come one
/// after the other; it is taken first. Functions give 0 or a code of `BASS_ErrorGetCode`.
class Engine
{
public:
    Engine();
    ~Engine();
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;

    int Init(int device, DWORD freq, DWORD flags);
    int Free();
    int Stop();
    int SetConfig(DWORD option, DWORD value);
    int SetConfigText(DWORD option, std::string text);
    Result<BASS_INFO> Info();
    /// What device 0 or 1 is; `open` says whether it is open.
    DeviceDescription Device(DWORD device, bool& open);
    Result<float> CpuPercent();
    Result<float> Volume();
    int SetVolume(float volume);

    /// Opens the file at `path` (bytes) and gives its handle.
    Result<DWORD> Open(SourceKind kind, std::string path, DWORD flags);
    /// Frees a channel, if it is one of `kind`.
    int FreeChannel(SourceKind kind, DWORD handle);
    /// Stops a channel, and frees it if it frees itself.
    int StopChannel(DWORD handle);

    /// Takes an effect into the kinds that channels may have. Works at any time.
    int RegisterEffect(const BASS_EFFECT* effect);
    /// Puts an effect on a channel and gives its handle.
    Result<DWORD> AddEffect(DWORD channel, DWORD type, int priority);

    /// Loads the plugin at `path` (bytes) and gives its handle.
    Result<DWORD> LoadPlugin(const std::string& path);
    /// Valid until the plugin is freed; null for a bad handle.
    const BASS_PLUGININFO* PluginInfo(DWORD handle) const { return m_plugins.Info(handle); }
    /// Frees a plugin, all for 0: its channels are stopped, and freed if they free themselves.
    int FreePlugin(DWORD handle);

    /// 0, or the code for a device that isn't open.
    int CheckInitialised();

    /// Calls `action(Session&)` under the lock and gives its code.
    template<class Action>
    int WithSession(Action action);

    /// Calls `action(Channel&, Session&)` under the lock and gives its code.
    template<class Action>
    int WithChannel(DWORD handle, Action action);

    /// Calls `action(Effect&)` under the lock and gives its code.
    template<class Action>
    int WithEffect(DWORD handle, Action action);

    /// Ends decoding for good, for the end of the process: the libraries that decode are taken down
    /// right after this. The thread that ends the process.
    void Quiesce() noexcept;

private:
    using ChannelTable = std::unordered_map<DWORD, std::shared_ptr<Channel>>;

    void StoreVolume();
    Channel* Find(DWORD handle, std::shared_ptr<Channel>& expired);
    void FreeExpired();
    void StopChannelsOf(const PluginRegistry::Libraries& libraries);
    void UpdateGain();
    DWORD NextHandle(DWORD kind);
    DWORD ChannelOfEffect(DWORD effect) const;

    PluginRegistry m_plugins;
    std::mutex m_lifecycle;
    std::mutex m_mutex;
    // Guarded by m_mutex:
    std::unique_ptr<Session> m_session;
    std::uint64_t m_sessions = 0; ///< how many there have been: tells one from the next
    ChannelTable m_channels;
    /// Paths of the channels that have freed themselves, which callers may still point to.
    std::vector<std::shared_ptr<const std::string>> m_paths;
    std::vector<const BASS_EFFECT*> m_effectTypes;
    DWORD m_handles = 0; ///< given so far in this process
    float m_volume = 1.0f;
    float m_audibleVolume = 1.0f; ///< the last one above 0
    float m_storedVolume = 1.0f;  ///< what the volume's file holds
    std::array<DWORD, 13> m_options = {};
    std::string m_proxy; ///< `BASS_CONFIG_NET_PROXY`
    DWORD m_initFlags = 0;
};

template<class Action>
int Engine::WithSession(Action action)
{
    const std::lock_guard lock(m_mutex);
    return m_session == nullptr ? static_cast<int>(BASS_ERROR_INIT) : action(*m_session);
}

template<class Action>
int Engine::WithChannel(DWORD handle, Action action)
{
    std::shared_ptr<Channel> expired; // goes after the lock: it may close a file
    const std::lock_guard lock(m_mutex);
    if (m_session == nullptr)
        return BASS_ERROR_INIT;
    Channel* const channel = Find(handle, expired);
    return channel == nullptr ? static_cast<int>(BASS_ERROR_HANDLE) : action(*channel, *m_session);
}

template<class Action>
int Engine::WithEffect(DWORD handle, Action action)
{
    std::shared_ptr<Channel> expired; // as above
    const std::lock_guard lock(m_mutex);
    if (m_session == nullptr)
        return BASS_ERROR_INIT;
    Channel* const channel = Find(ChannelOfEffect(handle), expired);
    Effect* const effect = channel == nullptr ? nullptr : channel->Effects().Find(handle);
    return effect == nullptr ? static_cast<int>(BASS_ERROR_HANDLE) : action(*effect);
}

} // namespace velmo::engine
