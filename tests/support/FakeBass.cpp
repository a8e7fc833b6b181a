#include "FakeBass.h"

#include "core/UnicodePath.h"

#include <algorithm>
#include <cstring>
#include <iomanip>
#include <sstream>
#include <utility>

namespace velmo::test {

namespace {

// The library's functions are plain ones: this is the way back to the object.
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): for the reason above
FakeBass* current = nullptr;

FakeBass::Channel* Find(DWORD handle)
{
    const auto found = current->channels.find(handle);
    return found == current->channels.end() ? nullptr : &found->second;
}

/// Writes a call down with the arguments that matter. 1, as of a call that succeeds.
template<typename... Arguments>
BOOL Note(const char* call, const Arguments&... arguments)
{
    std::ostringstream text;
    text << call;
    ((text << ' ' << arguments), ...);
    current->calls.push_back(std::move(text).str());
    return 1;
}

DWORD Open(const char* call, const void* file, bool module)
{
    const std::string path = FromUtf16(static_cast<const char16_t*>(file));
    Note(call, path);
    const auto sound = current->sounds.find(path);
    if (sound == current->sounds.end() || sound->second.isModule != module)
        return 0;
    const DWORD handle = current->nextHandle++;
    current->channels[handle] = {
        .path = path, .seconds = sound->second.seconds, .isModule = module};
    return handle;
}

BOOL FreeKind(const char* call, DWORD handle, bool module)
{
    Note(call, handle);
    const FakeBass::Channel* channel = Find(handle);
    return channel != nullptr && channel->isModule == module
           && current->channels.erase(handle) != 0;
}

QWORD Bytes(double seconds)
{
    return static_cast<QWORD>(seconds * FakeBass::BytesPerSecond);
}

void FillDevice(modBass& table)
{
    table.BASS_GetVersion = []() noexcept { return current->version; };
    table.BASS_ErrorGetCode = []() noexcept -> int { return BASS_ERROR_HANDLE; };
    table.BASS_Init = [](int device, DWORD freq, DWORD flags, void*, void*) noexcept -> BOOL {
        Note("BASS_Init", device, freq, flags);
        return current->initSucceeds ? 1 : 0;
    };
    table.BASS_Free = []() noexcept {
        current->channels.clear();
        return Note("BASS_Free");
    };
    table.BASS_Stop = []() noexcept { return Note("BASS_Stop"); };
    table.BASS_GetVolume = []() noexcept { return current->volume; };
    table.BASS_SetVolume = [](float volume) noexcept -> BOOL {
        Note("BASS_SetVolume", volume);
        if (volume < 0 || volume > 1)
            return 0;
        current->volume = volume;
        return 1;
    };
}

void FillOptions(modBass& table)
{
    table.BASS_SetConfig = [](DWORD option, DWORD value) noexcept {
        return Note("BASS_SetConfig", option, static_cast<std::int32_t>(value));
    };
    table.BASS_SetConfigPtr = [](DWORD option, const void* value) noexcept {
        return Note(
            "BASS_SetConfigPtr", option, std::quoted(static_cast<const char*>(value), '\''));
    };
    table.BASS_GetInfo = [](BASS_INFO* info) noexcept {
        info->eax = 1;
        return Note("BASS_GetInfo");
    };
    table.BASS_SetEAXParameters = [](int room, float volume, float decay, float damp) noexcept {
        return Note("BASS_SetEAXParameters", room, volume, decay, damp);
    };
}

void FillPlugins(modBass& table)
{
    table.BASS_PluginLoad = [](const char* file, DWORD flags) noexcept -> HPLUGIN {
        Note("BASS_PluginLoad", file, flags);
        const auto plugin = current->plugins.find(file);
        if (plugin == current->plugins.end())
            return 0;
        const HPLUGIN handle = current->nextHandle++;
        current->loadedPlugins[handle] = {.version = 1,
                                          .formatc = static_cast<DWORD>(plugin->second.size()),
                                          .formats = plugin->second.data()};
        return handle;
    };
    table.BASS_PluginGetInfo = [](HPLUGIN handle) noexcept -> const BASS_PLUGININFO* {
        const auto plugin = current->loadedPlugins.find(handle);
        return plugin == current->loadedPlugins.end() ? nullptr : &plugin->second;
    };
    table.BASS_PluginFree = [](HPLUGIN handle) noexcept -> BOOL {
        Note("BASS_PluginFree", handle);
        return current->loadedPlugins.erase(handle) != 0 ? 1 : 0;
    };
}

void FillOpening(modBass& table)
{
    table.BASS_StreamCreateFile = [](BOOL, const void* file, QWORD, QWORD, DWORD) noexcept {
        return Open("BASS_StreamCreateFile", file, false);
    };
    table.BASS_MusicLoad = [](BOOL, const void* file, QWORD, DWORD, DWORD, DWORD) noexcept {
        return Open("BASS_MusicLoad", file, true);
    };
    table.BASS_StreamCreateURL = [](const char*, DWORD, DWORD, void*, void*) noexcept -> HSTREAM {
        Note("BASS_StreamCreateURL");
        return 0;
    };
    table.BASS_StreamFree = [](HSTREAM handle) noexcept {
        return FreeKind("BASS_StreamFree", handle, false);
    };
    table.BASS_MusicFree = [](HMUSIC handle) noexcept {
        return FreeKind("BASS_MusicFree", handle, true);
    };
}

void FillTransport(modBass& table)
{
    table.BASS_ChannelPlay = [](DWORD handle, BOOL restart) noexcept -> BOOL {
        Note("BASS_ChannelPlay", handle);
        FakeBass::Channel* channel = Find(handle);
        if (channel == nullptr)
            return 0;
        channel->state = BASS_ACTIVE_PLAYING;
        channel->position = restart != 0 ? 0 : channel->position;
        return 1;
    };
    table.BASS_ChannelPause = [](DWORD handle) noexcept -> BOOL {
        Note("BASS_ChannelPause", handle);
        FakeBass::Channel* channel = Find(handle);
        if (channel == nullptr || channel->state != BASS_ACTIVE_PLAYING)
            return 0;
        channel->state = BASS_ACTIVE_PAUSED;
        return 1;
    };
    table.BASS_ChannelStop = [](DWORD handle) noexcept -> BOOL {
        Note("BASS_ChannelStop", handle);
        return current->channels.erase(handle) != 0 ? 1 : 0;
    };
    table.BASS_ChannelIsActive = [](DWORD handle) noexcept {
        const FakeBass::Channel* channel = Find(handle);
        return channel == nullptr ? static_cast<DWORD>(BASS_ACTIVE_STOPPED) : channel->state;
    };
}

void FillPosition(modBass& table)
{
    table.BASS_ChannelGetPosition = [](DWORD handle, DWORD) noexcept {
        const FakeBass::Channel* channel = Find(handle);
        return channel == nullptr ? ~QWORD{0} : Bytes(channel->position);
    };
    table.BASS_ChannelSetPosition = [](DWORD handle, QWORD position, DWORD) noexcept -> BOOL {
        Note("BASS_ChannelSetPosition", handle, position);
        FakeBass::Channel* channel = Find(handle);
        if (channel == nullptr || position > Bytes(channel->seconds))
            return 0;
        channel->position = static_cast<double>(position) / FakeBass::BytesPerSecond;
        return 1;
    };
    table.BASS_ChannelGetLength = [](DWORD handle, DWORD) noexcept {
        const FakeBass::Channel* channel = Find(handle);
        return channel == nullptr ? ~QWORD{0} : Bytes(channel->seconds);
    };
    table.BASS_ChannelBytes2Seconds = [](DWORD handle, QWORD bytes) noexcept {
        return Find(handle) == nullptr ? -1.0
                                       : static_cast<double>(bytes) / FakeBass::BytesPerSecond;
    };
    table.BASS_ChannelGetInfo = [](DWORD handle, BASS_CHANNELINFO* info) noexcept -> BOOL {
        const FakeBass::Channel* channel = Find(handle);
        if (channel == nullptr)
            return 0;
        *info = {.freq = 44100,
                 .chans = current->chans,
                 .flags = 0,
                 .ctype = 0,
                 .filename = channel->path.c_str()};
        return 1;
    };
    table.BASS_ChannelGetAttribute = [](DWORD handle, DWORD, float* value) noexcept -> BOOL {
        Note("BASS_ChannelGetAttribute", handle);
        *value = 44100;
        return Find(handle) == nullptr ? 0 : 1;
    };
}

FakeBass::Effect* FindEffect(HFX handle)
{
    const auto found = current->effects.find(handle);
    if (found == current->effects.end() || Find(found->second.channel) == nullptr)
        return nullptr;
    return &found->second;
}

void FillEffects(modBass& table)
{
    table.BASS_ChannelSetFX = [](DWORD handle, DWORD type, int priority) noexcept -> HFX {
        Note("BASS_ChannelSetFX", handle, type, priority);
        if (Find(handle) == nullptr)
            return 0;
        current->effects[current->nextEffect].channel = handle;
        return current->nextEffect++;
    };
    table.BASS_ChannelRemoveFX = [](DWORD handle, HFX effect) noexcept -> BOOL {
        Note("BASS_ChannelRemoveFX", handle, effect);
        return current->effects.erase(effect) != 0 ? 1 : 0;
    };
    table.BASS_FXSetParameters = [](HFX handle, const void* record) noexcept -> BOOL {
        const auto& band = *static_cast<const BASS_BFX_PEAKEQ*>(record);
        Note("BASS_FXSetParameters", handle, band.lBand);
        FakeBass::Effect* effect = FindEffect(handle);
        if (effect != nullptr)
            effect->bands[band.lBand] = band;
        return effect != nullptr ? 1 : 0;
    };
    table.BASS_FXGetParameters = [](HFX handle, void* record) noexcept -> BOOL {
        auto& band = *static_cast<BASS_BFX_PEAKEQ*>(record);
        FakeBass::Effect* effect = FindEffect(handle);
        if (effect == nullptr || !effect->bands.contains(band.lBand))
            return 0;
        band = effect->bands[band.lBand];
        return 1;
    };
}

void FillData(modBass& table)
{
    table.BASS_ChannelGetData = [](DWORD handle, void* buffer, DWORD length) noexcept -> DWORD {
        Note("BASS_ChannelGetData", handle, length);
        if (Find(handle) == nullptr)
            return ~DWORD{0};
        const bool isSpectrum = length == BASS_DATA_FFT2048;
        const std::vector<float>& data = isSpectrum ? current->spectrum : current->wave;
        const std::size_t room = isSpectrum ? 4096 : length & ~DWORD{BASS_DATA_FLOAT};
        const std::size_t bytes = std::min(room, data.size() * sizeof(float));
        std::memcpy(buffer, data.data(), bytes);
        return static_cast<DWORD>(bytes);
    };
}

} // namespace

FakeBass::FakeBass()
{
    current = this;
}

FakeBass::~FakeBass()
{
    current = nullptr;
}

modBass FakeBass::Table() const
{
    modBass table;
    FillDevice(table);
    FillOptions(table);
    FillPlugins(table);
    FillOpening(table);
    FillTransport(table);
    FillPosition(table);
    FillEffects(table);
    FillData(table);
    return table;
}

DWORD FakeBass::EffectsVersion() noexcept
{
    return current->effectsVersion;
}

std::string FakeBass::TakeCalls()
{
    std::string all;
    for (const std::string& call : std::exchange(calls, {}))
        all += all.empty() ? call : "; " + call;
    return all;
}

void FakeBass::Advance(double seconds)
{
    for (auto channel = channels.begin(); channel != channels.end();) {
        if (channel->second.state == BASS_ACTIVE_PLAYING)
            channel->second.position += seconds;
        // What is opened by the player frees itself at its end.
        channel = channel->second.position > channel->second.seconds ? channels.erase(channel)
                                                                     : ++channel;
    }
}

} // namespace velmo::test
