// The C functions of plugins.

#include "Guarded.h"
#include "PathArgument.h"
#include "bass.h"

#include <optional>
#include <string>

namespace {

using velmo::engine::Guarded;
using velmo::engine::Result;
using velmo::engine::Succeeds;
using velmo::engine::TheEngine;

} // namespace

HPLUGIN BASS_PluginLoad(const char* file, DWORD flags) noexcept
{
    DWORD handle = 0;
    Guarded([&]() -> int {
        const std::optional<std::string> path = velmo::engine::PathArgument(file, flags);
        if (!path)
            return BASS_ERROR_ILLPARAM;
        velmo::engine::EndDecodingAtExit();
        const Result<DWORD> loaded = TheEngine().LoadPlugin(*path);
        handle = loaded.value;
        return loaded.error;
    });
    return handle;
}

const BASS_PLUGININFO* BASS_PluginGetInfo(HPLUGIN handle) noexcept
{
    const BASS_PLUGININFO* info = nullptr;
    Guarded([&]() -> int {
        info = TheEngine().PluginInfo(handle);
        return info == nullptr ? BASS_ERROR_HANDLE : BASS_OK;
    });
    return info;
}

BOOL BASS_PluginFree(HPLUGIN handle) noexcept
{
    return Succeeds([=] { return TheEngine().FreePlugin(handle); });
}
