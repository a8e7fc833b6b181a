#pragma once

#include "bass.h"

#include <cstdio>
#include <cstdlib>
#include <string>

#include <dlfcn.h>

namespace velmo::bench {

/// The functions of the real libbass.so that the measurements call.
struct EngineTable
{
    decltype(&::BASS_Init) Init = nullptr;
    decltype(&::BASS_Free) Free = nullptr;
    decltype(&::BASS_SetConfig) SetConfig = nullptr;
    decltype(&::BASS_StreamCreateFile) StreamCreateFile = nullptr;
    decltype(&::BASS_MusicLoad) MusicLoad = nullptr;
    decltype(&::BASS_StreamFree) StreamFree = nullptr;
    decltype(&::BASS_ChannelPlay) ChannelPlay = nullptr;
    decltype(&::BASS_ChannelStop) ChannelStop = nullptr;
    decltype(&::BASS_ChannelIsActive) ChannelIsActive = nullptr;
    decltype(&::BASS_ChannelGetPosition) ChannelGetPosition = nullptr;
    decltype(&::BASS_ChannelGetLength) ChannelGetLength = nullptr;
    decltype(&::BASS_GetStatistics) GetStatistics = nullptr;
    decltype(&::BASS_GetDeviceInfo) GetDeviceInfo = nullptr;
};

template<class Function>
void Find(void* library, const char* name, Function& function)
{
    function = reinterpret_cast<Function>(dlsym(library, name));
    if (function == nullptr) {
        std::fprintf(stderr, "%s is missing\n", name);
        std::exit(1);
    }
}

/// Opens `directory`/libbass.so; ends the program if that is not possible.
inline EngineTable LoadEngine(const std::string& directory)
{
    void* library = dlopen((directory + "/libbass.so").c_str(), RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        std::fprintf(stderr, "%s\n", dlerror());
        std::exit(1);
    }
    EngineTable table;
    Find(library, "BASS_Init", table.Init);
    Find(library, "BASS_Free", table.Free);
    Find(library, "BASS_SetConfig", table.SetConfig);
    Find(library, "BASS_StreamCreateFile", table.StreamCreateFile);
    Find(library, "BASS_MusicLoad", table.MusicLoad);
    Find(library, "BASS_StreamFree", table.StreamFree);
    Find(library, "BASS_ChannelPlay", table.ChannelPlay);
    Find(library, "BASS_ChannelStop", table.ChannelStop);
    Find(library, "BASS_ChannelIsActive", table.ChannelIsActive);
    Find(library, "BASS_ChannelGetPosition", table.ChannelGetPosition);
    Find(library, "BASS_ChannelGetLength", table.ChannelGetLength);
    Find(library, "BASS_GetStatistics", table.GetStatistics);
    Find(library, "BASS_GetDeviceInfo", table.GetDeviceInfo);
    return table;
}

} // namespace velmo::bench
