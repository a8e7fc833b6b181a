#pragma once

#include "bass.h"

#include "ports/Libraries.h"

#include <cstdint>
#include <memory>
#include <string>

namespace velmo {

/// The sound library's functions, as loaded at run time. Each member bears the name of the function
/// that it points to; the library's header tells what it does. Tests fill the table with functions
/// of their own.
struct modBass
{
    decltype(&::BASS_GetVersion) BASS_GetVersion = nullptr;
    decltype(&::BASS_ErrorGetCode) BASS_ErrorGetCode = nullptr;
    decltype(&::BASS_Init) BASS_Init = nullptr;
    decltype(&::BASS_Free) BASS_Free = nullptr;
    decltype(&::BASS_Stop) BASS_Stop = nullptr;
    decltype(&::BASS_SetConfig) BASS_SetConfig = nullptr;
    decltype(&::BASS_SetConfigPtr) BASS_SetConfigPtr = nullptr;
    decltype(&::BASS_GetInfo) BASS_GetInfo = nullptr;
    decltype(&::BASS_GetDeviceInfo) BASS_GetDeviceInfo = nullptr;
    decltype(&::BASS_GetCPU) BASS_GetCPU = nullptr;
    decltype(&::BASS_SetEAXParameters) BASS_SetEAXParameters = nullptr;
    decltype(&::BASS_PluginLoad) BASS_PluginLoad = nullptr;
    decltype(&::BASS_PluginGetInfo) BASS_PluginGetInfo = nullptr;
    decltype(&::BASS_PluginFree) BASS_PluginFree = nullptr;
    decltype(&::BASS_GetVolume) BASS_GetVolume = nullptr;
    decltype(&::BASS_SetVolume) BASS_SetVolume = nullptr;
    decltype(&::BASS_StreamCreateFile) BASS_StreamCreateFile = nullptr;
    decltype(&::BASS_StreamCreateURL) BASS_StreamCreateURL = nullptr;
    decltype(&::BASS_MusicLoad) BASS_MusicLoad = nullptr;
    decltype(&::BASS_StreamFree) BASS_StreamFree = nullptr;
    decltype(&::BASS_MusicFree) BASS_MusicFree = nullptr;
    decltype(&::BASS_ChannelPlay) BASS_ChannelPlay = nullptr;
    decltype(&::BASS_ChannelPause) BASS_ChannelPause = nullptr;
    decltype(&::BASS_ChannelStop) BASS_ChannelStop = nullptr;
    decltype(&::BASS_ChannelIsActive) BASS_ChannelIsActive = nullptr;
    decltype(&::BASS_ChannelGetPosition) BASS_ChannelGetPosition = nullptr;
    decltype(&::BASS_ChannelSetPosition) BASS_ChannelSetPosition = nullptr;
    decltype(&::BASS_ChannelGetLength) BASS_ChannelGetLength = nullptr;
    decltype(&::BASS_ChannelBytes2Seconds) BASS_ChannelBytes2Seconds = nullptr;
    decltype(&::BASS_ChannelGetInfo) BASS_ChannelGetInfo = nullptr;
    decltype(&::BASS_ChannelGetAttribute) BASS_ChannelGetAttribute = nullptr;
    decltype(&::BASS_ChannelGetData) BASS_ChannelGetData = nullptr;
    decltype(&::BASS_ChannelSetFX) BASS_ChannelSetFX = nullptr;
    decltype(&::BASS_ChannelRemoveFX) BASS_ChannelRemoveFX = nullptr;
    decltype(&::BASS_FXSetParameters) BASS_FXSetParameters = nullptr;
    decltype(&::BASS_FXGetParameters) BASS_FXGetParameters = nullptr;
};

/// What the program wants of the sound library: version 2.4.
constexpr std::uint32_t WantedBassVersion = 0x204;

/// The upper 16 bits of a version number.
constexpr std::uint32_t HiWord(std::uint32_t version)
{
    return version >> 16U;
}

/// Fills `table` from the open library. False, and the table as it was, if a function is missing.
[[nodiscard]] bool LoadBass(ports::Libraries::Library& library, modBass& table);

/// The sound library's file beside the executable.
constexpr const char* BassFileName = "libbass.so";

/// The file of the equalizer's add-on beside the executable.
constexpr const char* BassFxFileName = "libbass_fx.so";

/// An opened library of sound.
struct BassLibrary
{
    std::unique_ptr<ports::Libraries::Library> library;
    /// As it says; 0 if the library lacks a function or can't be opened.
    std::uint32_t version = 0;
};

/// Opens the library at `path` and fills `table` if all its functions are there.
[[nodiscard]] BassLibrary OpenBass(ports::Libraries& libraries,
                                   const std::string& path,
                                   modBass& table);

/// Opens the add-on at `path`, once the sound library is open. While it is open, the sound
/// library's table knows the add-on's effects.
[[nodiscard]] BassLibrary OpenBassFx(ports::Libraries& libraries, const std::string& path);

} // namespace velmo
