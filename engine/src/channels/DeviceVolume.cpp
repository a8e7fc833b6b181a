#include "DeviceVolume.h"

#include "device/OutputChoice.h"

#include <array>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <string>

#include <system_error>
#include <unistd.h>

namespace velmo::engine {

namespace {

namespace fs = std::filesystem;

/// Empty if the environment names no place.
fs::path VolumeFile()
{
    if (const fs::path home = EnvironmentText("VELMO_HOME"); !home.empty())
        return home / "device-volume";
    if (const fs::path state = EnvironmentText("XDG_STATE_HOME"); state.is_absolute())
        return state / "velmo-player" / "device-volume";
    if (const fs::path home = EnvironmentText("HOME"); !home.empty())
        return home / ".local" / "state" / "velmo-player" / "device-volume";
    return {};
}

} // namespace

float LoadDeviceVolume()
{
    std::array<char, 64> text = {};
    std::ifstream file(VolumeFile(), std::ios::binary);
    file.read(text.data(), text.size());
    float volume = 0;
    std::from_chars(text.data(), text.data() + file.gcount(), volume);
    return volume > 0 && volume <= 1 ? volume : 1.0f;
}

void StoreDeviceVolume(float volume)
{
    const fs::path file = VolumeFile();
    if (!(volume > 0) || file.empty())
        return;
    std::error_code failure;
    fs::create_directories(file.parent_path(), failure);
    std::array<char, 64> text = {};
    auto* const end = std::to_chars(text.data(), text.data() + text.size(), volume).ptr;
    // A name of its own, since other players may end at the same time.
    const fs::path part = file.string() + "." + std::to_string(getpid());
    std::ofstream out(part, std::ios::binary | std::ios::trunc);
    out.write(text.data(), end - text.data());
    out << '\n';
    out.close();
    if (out)
        fs::rename(part, file, failure);
    if (!out || failure)
        fs::remove(part, failure);
}

} // namespace velmo::engine
