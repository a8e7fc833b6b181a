#pragma once

#include <cubeb/cubeb.h>

#include <optional>

namespace velmo::engine {

/// The functions of the sound library that are used here. The library is opened when it is needed
/// first: linked, it would cost every start of the process some milliseconds, and not opening it
/// makes the other outputs independent of it.
///
/// cubeb_stream_get_latency isn't among them: it ends the process once a stream has failed.
struct CubebLibrary
{
    decltype(&cubeb_init) init = nullptr;
    decltype(&cubeb_destroy) destroy = nullptr;
    decltype(&cubeb_get_backend_id) getBackendId = nullptr;
    decltype(&cubeb_get_max_channel_count) getMaxChannelCount = nullptr;
    decltype(&cubeb_enumerate_devices) enumerateDevices = nullptr;
    decltype(&cubeb_device_collection_destroy) deviceCollectionDestroy = nullptr;
    decltype(&cubeb_stream_init) streamInit = nullptr;
    decltype(&cubeb_stream_destroy) streamDestroy = nullptr;
    decltype(&cubeb_stream_start) streamStart = nullptr;
    decltype(&cubeb_stream_stop) streamStop = nullptr;
    decltype(&cubeb_stream_get_position) streamGetPosition = nullptr;

    /// Empty if the library, or a function of it, isn't there. It stays open for the rest of the
    /// process, for a call into it may hang.
    [[nodiscard]] static std::optional<CubebLibrary> Load() noexcept;
};

} // namespace velmo::engine
