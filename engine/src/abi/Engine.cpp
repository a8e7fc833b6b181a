#include "Engine.h"

#include "channels/DeviceVolume.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace velmo::engine {

namespace {

constexpr std::int32_t MinRate = 8000;
constexpr std::int32_t MaxRate = 192000;
constexpr DWORD DefaultBufferMs = 500;

// A handle's upper bits tell its kind, the lower ones count.
constexpr DWORD KindShift = 28;
constexpr DWORD MaxCount = (1U << KindShift) - 1;

std::uint32_t UsableRate(DWORD freq)
{
    return static_cast<std::uint32_t>(
        std::clamp(static_cast<std::int32_t>(freq), MinRate, MaxRate));
}

bool IsKind(SourceKind kind, DWORD handle)
{
    return handle >> KindShift == static_cast<DWORD>(kind);
}

} // namespace

Engine::Engine()
{
    m_options[BASS_CONFIG_BUFFER] = DefaultBufferMs;
}

Engine::~Engine()
{
    Free();
}

int Engine::Init(int device, DWORD freq, DWORD flags)
{
    const std::lock_guard lifecycle(m_lifecycle);
    if (CheckInitialised() == BASS_OK)
        return BASS_ERROR_ALREADY;
    if (device != -1 && device != 1)
        return BASS_ERROR_DEVICE;
    std::unique_ptr<Session> session = Session::Open(
        {.sampleRate = UsableRate(freq), .allSpeakers = (flags & BASS_DEVICE_SPEAKERS) != 0},
        {.mono = (flags & BASS_DEVICE_MONO) != 0, .eightBits = (flags & BASS_DEVICE_8BITS) != 0},
        [this] { FreeExpired(); });
    if (session == nullptr)
        return BASS_ERROR_DEVICE;
    const float volume = LoadDeviceVolume();
    const std::lock_guard lock(m_mutex);
    m_session = std::move(session);
    m_initFlags = flags;
    ++m_sessions;
    m_volume = volume;
    m_audibleVolume = volume;
    m_storedVolume = volume;
    UpdateGain();
    return BASS_OK;
}

int Engine::Free()
{
    const std::lock_guard lifecycle(m_lifecycle);
    std::unique_ptr<Session> session;
    ChannelTable channels;
    std::vector<std::shared_ptr<const std::string>> paths;
    {
        const std::lock_guard lock(m_mutex);
        session = std::move(m_session);
        channels.swap(m_channels);
        paths.swap(m_paths);
    }
    if (session == nullptr)
        return BASS_ERROR_INIT;
    session.reset();
    m_plugins.Take(0);
    StoreVolume();
    return BASS_OK;
}

int Engine::Stop()
{
    // A device that is being opened or closed just now is not waited for: closing stores as well.
    const std::unique_lock lifecycle(m_lifecycle, std::try_to_lock);
    {
        const std::lock_guard lock(m_mutex);
        if (m_session == nullptr)
            return BASS_ERROR_INIT;
        m_session->Decoder().HoldOutput(true);
    }
    if (lifecycle)
        StoreVolume();
    return BASS_OK;
}

/// Writes the volume's file if it has changed. Under m_lifecycle, so that one writes at a time.
void Engine::StoreVolume()
{
    float volume = 0;
    {
        const std::lock_guard lock(m_mutex);
        volume = m_audibleVolume;
        if (std::exchange(m_storedVolume, volume) == volume)
            return;
    }
    StoreDeviceVolume(volume);
}

int Engine::SetConfig(DWORD option, DWORD value)
{
    const bool known = option == BASS_CONFIG_BUFFER
                       || (option >= BASS_CONFIG_CURVE_VOL && option <= BASS_CONFIG_NET_BUFFER);
    if (!known)
        return BASS_ERROR_ILLPARAM;
    const std::lock_guard lock(m_mutex);
    m_options.at(option) =
        option == BASS_CONFIG_BUFFER ? std::clamp<DWORD>(value, 10, 5000) : value;
    UpdateGain();
    return BASS_OK;
}

int Engine::SetConfigText(DWORD option, std::string text)
{
    if (option != BASS_CONFIG_NET_PROXY)
        return BASS_ERROR_ILLPARAM;
    const std::lock_guard lock(m_mutex);
    m_proxy = std::move(text);
    return BASS_OK;
}

Result<BASS_INFO> Engine::Info()
{
    constexpr DWORD AnyRate = 0x10;
    constexpr DWORD MonoStereo8And16Bits = 0xF00;
    const std::lock_guard lock(m_mutex);
    if (m_session == nullptr)
        return Result<BASS_INFO>::Failure(BASS_ERROR_INIT);
    BASS_INFO info = {};
    info.flags = AnyRate | MonoStereo8And16Bits;
    info.minrate = MinRate;
    info.maxrate = MaxRate;
    info.eax = 1;
    info.minbuf = m_session->LeastBufferMs();
    info.latency = m_session->LatencyMs();
    info.initflags = m_initFlags;
    info.speakers = m_session->Device().Description().speakers;
    info.freq = m_session->SampleRate();
    return {.value = info};
}

DeviceDescription Engine::Device(DWORD device, bool& open)
{
    const std::lock_guard lock(m_mutex);
    open = device != 0 && m_session != nullptr;
    if (device == 0)
        return DescribeSilence();
    return open ? m_session->Device().Description() : DeviceControl::Expected();
}

Result<float> Engine::CpuPercent()
{
    const std::lock_guard lock(m_mutex);
    return m_session == nullptr ? Result<float>::Failure(BASS_ERROR_INIT)
                                : Result<float>{.value = m_session->Device().CpuPercent()};
}

Result<float> Engine::Volume()
{
    const std::lock_guard lock(m_mutex);
    return m_session == nullptr ? Result<float>::Failure(BASS_ERROR_INIT)
                                : Result<float>{.value = m_volume};
}

int Engine::SetVolume(float volume)
{
    const std::lock_guard lock(m_mutex);
    if (m_session == nullptr)
        return BASS_ERROR_INIT;
    if (!(volume >= 0 && volume <= 1))
        return BASS_ERROR_ILLPARAM;
    m_volume = volume;
    if (volume > 0)
        m_audibleVolume = volume;
    UpdateGain();
    return BASS_OK;
}

Result<DWORD> Engine::Open(SourceKind kind, std::string path, DWORD flags)
{
    ChannelOptions options{.flags = flags};
    std::uint64_t openedIn = 0;
    {
        const std::lock_guard lock(m_mutex);
        if (m_session == nullptr)
            return Result<DWORD>::Failure(BASS_ERROR_INIT);
        options.deviceRate = m_session->SampleRate();
        options.speakers = m_session->Speakers();
        options.bufferMs =
            std::max<DWORD>(m_options[BASS_CONFIG_BUFFER], m_session->LeastBufferMs());
        openedIn = m_sessions;
    }
    Result<std::unique_ptr<Source>> source =
        Source::Open(path.c_str(), kind, options.deviceRate, *m_plugins.List());
    if (!source)
        return Result<DWORD>::Failure(source.error);
    auto channel = std::make_shared<Channel>(std::move(path), std::move(source.value), options);

    const std::lock_guard lock(m_mutex);
    // The device may have been closed meanwhile, or be another one with another rate.
    if (m_session == nullptr || m_sessions != openedIn)
        return Result<DWORD>::Failure(BASS_ERROR_INIT);
    // So may the plugin be gone: whoever frees it stops the channels in the table after that.
    if (channel->Plugin() != nullptr && !m_plugins.IsLoaded(channel->Plugin()))
        return Result<DWORD>::Failure(BASS_ERROR_FILEFORM);
    const DWORD handle = NextHandle(static_cast<DWORD>(kind));
    if (handle == 0)
        return Result<DWORD>::Failure(BASS_ERROR_UNKNOWN);
    m_channels.emplace(handle, std::move(channel));
    return {.value = handle};
}

int Engine::FreeChannel(SourceKind kind, DWORD handle)
{
    std::shared_ptr<Channel> freed;
    return WithChannel(handle, [&](Channel& channel, Session& session) -> int {
        if (!IsKind(kind, handle))
            return BASS_ERROR_HANDLE;
        channel.Stop(session.Decoder());
        freed = std::move(m_channels.extract(handle).mapped());
        return BASS_OK;
    });
}

int Engine::StopChannel(DWORD handle)
{
    std::shared_ptr<Channel> freed;
    return WithChannel(handle, [&](Channel& channel, Session& session) -> int {
        channel.Stop(session.Decoder());
        if (channel.FreesItself())
            freed = std::move(m_channels.extract(handle).mapped());
        return BASS_OK;
    });
}

Result<DWORD> Engine::LoadPlugin(const std::string& path)
{
    return m_plugins.Load(path);
}

int Engine::FreePlugin(DWORD handle)
{
    const PluginRegistry::Libraries libraries = m_plugins.Take(handle);
    if (libraries.empty() && handle != 0)
        return BASS_ERROR_HANDLE;
    StopChannelsOf(libraries);
    return BASS_OK;
}

/// A channel that frees itself is freed; the others keep their library until they are.
void Engine::StopChannelsOf(const PluginRegistry::Libraries& libraries)
{
    std::vector<std::shared_ptr<Channel>> freed; // goes after the lock
    const std::lock_guard lock(m_mutex);
    for (auto each = m_channels.begin(); each != m_channels.end();) {
        Channel& channel = *each->second;
        const bool isTheirs = std::ranges::any_of(
            libraries, [&](const auto& library) { return library == channel.Plugin(); });
        if (!isTheirs) {
            ++each;
            continue;
        }
        channel.Stop(m_session->Decoder());
        if (channel.FreesItself()) {
            m_paths.push_back(channel.Path());
            freed.push_back(std::move(each->second));
            each = m_channels.erase(each);
        } else {
            ++each;
        }
    }
}

int Engine::CheckInitialised()
{
    const std::lock_guard lock(m_mutex);
    return m_session == nullptr ? BASS_ERROR_INIT : BASS_OK;
}

void Engine::Quiesce() noexcept
{
    // Another thread that opens or closes the device just now is not waited for.
    const std::unique_lock lifecycle(m_lifecycle, std::try_to_lock);
    if (lifecycle && m_session != nullptr)
        m_session->Decoder().Stop();
}

/// Null if `handle` names no channel. One that has been heard to its end and frees itself is taken
/// out of the table into `expired`.
Channel* Engine::Find(DWORD handle, std::shared_ptr<Channel>& expired)
{
    const auto found = m_channels.find(handle);
    if (found == m_channels.end())
        return nullptr;
    found->second->Settle(m_session->HeardFrames());
    if (!found->second->Expired())
        return found->second.get();
    m_paths.push_back(found->second->Path());
    expired = std::move(found->second);
    m_channels.erase(found);
    return nullptr;
}

/// Called on the decoding thread when a voice was heard to its end.
void Engine::FreeExpired()
{
    std::vector<std::shared_ptr<Channel>> expired;
    const std::lock_guard lock(m_mutex);
    if (m_session == nullptr)
        return;
    const std::uint64_t heard = m_session->HeardFrames();
    for (auto each = m_channels.begin(); each != m_channels.end();) {
        each->second->Settle(heard);
        if (each->second->Expired()) {
            m_paths.push_back(each->second->Path());
            expired.push_back(std::move(each->second));
            each = m_channels.erase(each);
        } else {
            ++each;
        }
    }
}

void Engine::UpdateGain()
{
    if (m_session == nullptr)
        return;
    const bool logarithmic = m_options[BASS_CONFIG_CURVE_VOL] != 0;
    m_session->GetMixer().SetGain(logarithmic ? m_volume * m_volume : m_volume);
}

/// `kind` is 1 to 15. 0 when the numbers of this process are used up.
DWORD Engine::NextHandle(DWORD kind)
{
    if (m_handles == MaxCount)
        return 0;
    return (kind << KindShift) | ++m_handles;
}

} // namespace velmo::engine
