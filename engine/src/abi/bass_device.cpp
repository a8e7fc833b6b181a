// The C functions that tell what the device is. As the others: an operation of the engine behind a
// guard.

#include "Engine.h"
#include "Guarded.h"
#include "bass.h"

#include <string>

namespace {

using velmo::engine::DeviceDescription;
using velmo::engine::Guarded;
using velmo::engine::Result;
using velmo::engine::Succeeds;
using velmo::engine::TheEngine;

/// Texts that the calling thread was given last.
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): the caller frees nothing
thread_local DeviceDescription told;

DWORD FlagsOf(DWORD device, bool open)
{
    if (device == 0)
        return BASS_DEVICE_ENABLED;
    return BASS_DEVICE_ENABLED | BASS_DEVICE_DEFAULT | (open ? BASS_DEVICE_INIT : 0);
}

} // namespace

BOOL BASS_SetConfigPtr(DWORD option, const void* value) noexcept
{
    return Succeeds([=] {
        const auto* const text = static_cast<const char*>(value);
        return TheEngine().SetConfigText(option, text == nullptr ? "" : text);
    });
}

BOOL BASS_GetInfo(BASS_INFO* info) noexcept
{
    return Succeeds([=]() -> int {
        const Result<BASS_INFO> result = TheEngine().Info();
        if (!result)
            return result.error;
        if (info == nullptr)
            return BASS_ERROR_ILLPARAM;
        *info = result.value;
        return BASS_OK;
    });
}

BOOL BASS_GetDeviceInfo(DWORD device, BASS_DEVICEINFO* info) noexcept
{
    return Succeeds([=]() -> int {
        if (device > 1)
            return BASS_ERROR_DEVICE;
        if (info == nullptr)
            return BASS_ERROR_ILLPARAM;
        bool open = false;
        told = TheEngine().Device(device, open);
        *info = {.name = told.name.c_str(),
                 .driver = told.driver.c_str(),
                 .flags = FlagsOf(device, open)};
        return BASS_OK;
    });
}

float BASS_GetCPU() noexcept
{
    float percent = 0;
    Guarded([&] {
        const Result<float> result = TheEngine().CpuPercent();
        percent = result.value;
        return result.error;
    });
    return percent;
}
