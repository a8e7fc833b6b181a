#include "CubebLibrary.h"

#include <dlfcn.h>

namespace velmo::engine {

namespace {

template<typename Function>
bool Find(void* library, const char* name, Function& function) noexcept
{
    function = reinterpret_cast<Function>(dlsym(library, name));
    return function != nullptr;
}

} // namespace

std::optional<CubebLibrary> CubebLibrary::Load() noexcept
{
    void* const library = dlopen("libcubeb.so.0", RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    if (library == nullptr)
        return std::nullopt;
    CubebLibrary found;
    const bool complete =
        Find(library, "cubeb_init", found.init) && Find(library, "cubeb_destroy", found.destroy)
        && Find(library, "cubeb_get_backend_id", found.getBackendId)
        && Find(library, "cubeb_get_max_channel_count", found.getMaxChannelCount)
        && Find(library, "cubeb_enumerate_devices", found.enumerateDevices)
        && Find(library, "cubeb_device_collection_destroy", found.deviceCollectionDestroy)
        && Find(library, "cubeb_stream_init", found.streamInit)
        && Find(library, "cubeb_stream_destroy", found.streamDestroy)
        && Find(library, "cubeb_stream_start", found.streamStart)
        && Find(library, "cubeb_stream_stop", found.streamStop)
        && Find(library, "cubeb_stream_get_position", found.streamGetPosition);
    dlclose(library); // gives the count back; RTLD_NODELETE keeps it mapped
    return complete ? std::optional(found) : std::nullopt;
}

} // namespace velmo::engine
