#include "modBass.h"

namespace velmo {

namespace {

template<class Function>
bool Find(ports::Libraries::Library& library, const char* name, Function& function)
{
    // The C library hands out functions as data pointers; this is the one way back.
    function = reinterpret_cast<Function>(library.Symbol(name));
    return function != nullptr;
}

bool FindDevice(ports::Libraries::Library& library, modBass& table)
{
    return Find(library, "BASS_GetVersion", table.BASS_GetVersion)
           && Find(library, "BASS_ErrorGetCode", table.BASS_ErrorGetCode)
           && Find(library, "BASS_Init", table.BASS_Init)
           && Find(library, "BASS_Free", table.BASS_Free)
           && Find(library, "BASS_Stop", table.BASS_Stop)
           && Find(library, "BASS_SetConfig", table.BASS_SetConfig)
           && Find(library, "BASS_GetVolume", table.BASS_GetVolume)
           && Find(library, "BASS_SetVolume", table.BASS_SetVolume);
}

bool FindOpening(ports::Libraries::Library& library, modBass& table)
{
    return Find(library, "BASS_StreamCreateFile", table.BASS_StreamCreateFile)
           && Find(library, "BASS_StreamCreateURL", table.BASS_StreamCreateURL)
           && Find(library, "BASS_MusicLoad", table.BASS_MusicLoad)
           && Find(library, "BASS_StreamFree", table.BASS_StreamFree)
           && Find(library, "BASS_MusicFree", table.BASS_MusicFree);
}

bool FindChannel(ports::Libraries::Library& library, modBass& table)
{
    return Find(library, "BASS_ChannelPlay", table.BASS_ChannelPlay)
           && Find(library, "BASS_ChannelPause", table.BASS_ChannelPause)
           && Find(library, "BASS_ChannelStop", table.BASS_ChannelStop)
           && Find(library, "BASS_ChannelIsActive", table.BASS_ChannelIsActive)
           && Find(library, "BASS_ChannelGetPosition", table.BASS_ChannelGetPosition)
           && Find(library, "BASS_ChannelSetPosition", table.BASS_ChannelSetPosition)
           && Find(library, "BASS_ChannelGetLength", table.BASS_ChannelGetLength)
           && Find(library, "BASS_ChannelBytes2Seconds", table.BASS_ChannelBytes2Seconds)
           && Find(library, "BASS_ChannelGetInfo", table.BASS_ChannelGetInfo)
           && Find(library, "BASS_ChannelGetAttribute", table.BASS_ChannelGetAttribute);
}

} // namespace

bool LoadBass(ports::Libraries::Library& library, modBass& table)
{
    modBass found;
    if (!FindDevice(library, found) || !FindOpening(library, found) || !FindChannel(library, found))
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

} // namespace velmo
