#include "modBass.h"

#include "bass_fx.h"

namespace velmo {

namespace {

template<class Function>
bool Find(ports::Libraries::Library& library, const char* name, Function& function)
{
    // The C library hands out functions as data pointers; this is the one way back.
    function = reinterpret_cast<Function>(library.Symbol(name));
    return function != nullptr;
}

} // namespace

bool LoadBass(ports::Libraries::Library& library, modBass& table)
{
    modBass found;
    const bool all = Find(library, "BASS_GetVersion", found.BASS_GetVersion)
                     && Find(library, "BASS_ErrorGetCode", found.BASS_ErrorGetCode)
                     && Find(library, "BASS_Init", found.BASS_Init)
                     && Find(library, "BASS_Free", found.BASS_Free)
                     && Find(library, "BASS_Stop", found.BASS_Stop)
                     && Find(library, "BASS_SetConfig", found.BASS_SetConfig)
                     && Find(library, "BASS_SetConfigPtr", found.BASS_SetConfigPtr)
                     && Find(library, "BASS_GetInfo", found.BASS_GetInfo)
                     && Find(library, "BASS_GetDeviceInfo", found.BASS_GetDeviceInfo)
                     && Find(library, "BASS_GetCPU", found.BASS_GetCPU)
                     && Find(library, "BASS_SetEAXParameters", found.BASS_SetEAXParameters)
                     && Find(library, "BASS_PluginLoad", found.BASS_PluginLoad)
                     && Find(library, "BASS_PluginGetInfo", found.BASS_PluginGetInfo)
                     && Find(library, "BASS_PluginFree", found.BASS_PluginFree)
                     && Find(library, "BASS_GetVolume", found.BASS_GetVolume)
                     && Find(library, "BASS_SetVolume", found.BASS_SetVolume)
                     && Find(library, "BASS_StreamCreateFile", found.BASS_StreamCreateFile)
                     && Find(library, "BASS_StreamCreateURL", found.BASS_StreamCreateURL)
                     && Find(library, "BASS_MusicLoad", found.BASS_MusicLoad)
                     && Find(library, "BASS_StreamFree", found.BASS_StreamFree)
                     && Find(library, "BASS_MusicFree", found.BASS_MusicFree)
                     && Find(library, "BASS_ChannelPlay", found.BASS_ChannelPlay)
                     && Find(library, "BASS_ChannelPause", found.BASS_ChannelPause)
                     && Find(library, "BASS_ChannelStop", found.BASS_ChannelStop)
                     && Find(library, "BASS_ChannelIsActive", found.BASS_ChannelIsActive)
                     && Find(library, "BASS_ChannelGetPosition", found.BASS_ChannelGetPosition)
                     && Find(library, "BASS_ChannelSetPosition", found.BASS_ChannelSetPosition)
                     && Find(library, "BASS_ChannelGetLength", found.BASS_ChannelGetLength)
                     && Find(library, "BASS_ChannelBytes2Seconds", found.BASS_ChannelBytes2Seconds)
                     && Find(library, "BASS_ChannelGetInfo", found.BASS_ChannelGetInfo)
                     && Find(library, "BASS_ChannelGetAttribute", found.BASS_ChannelGetAttribute)
                     && Find(library, "BASS_ChannelGetData", found.BASS_ChannelGetData)
                     && Find(library, "BASS_ChannelSetFX", found.BASS_ChannelSetFX)
                     && Find(library, "BASS_ChannelRemoveFX", found.BASS_ChannelRemoveFX)
                     && Find(library, "BASS_FXSetParameters", found.BASS_FXSetParameters)
                     && Find(library, "BASS_FXGetParameters", found.BASS_FXGetParameters);
    if (!all)
        return false;
    table = found;
    return true;
}

BassLibrary OpenBass(ports::Libraries& libraries, const std::string& path, modBass& table)
{
    BassLibrary bass{.library = libraries.Open(path)};
    if (bass.library != nullptr && LoadBass(*bass.library, table))
        bass.version = table.BASS_GetVersion();
    return bass;
}

BassLibrary OpenBassFx(ports::Libraries& libraries, const std::string& path)
{
    BassLibrary addOn{.library = libraries.Open(path)};
    decltype(&::BASS_FX_GetVersion) getVersion = nullptr;
    if (addOn.library != nullptr && Find(*addOn.library, "BASS_FX_GetVersion", getVersion))
        addOn.version = getVersion();
    return addOn;
}

} // namespace velmo
