#pragma once

namespace velmo::engine {

/// The file in which the device remembers its volume: ${VELMO_HOME}/device-volume, or
/// ${XDG_STATE_HOME:-~/.local/state}/velmo-player/device-volume.

/// The volume that was stored last, above 0 to 1; 1 if there is none that can be read. Reads a
/// file.
float LoadDeviceVolume();

/// Stores `volume`, 0 to 1; a 0 is not stored, or the next start would be silent. Writes a file,
/// whole or not at all; a failure is ignored, since the volume then only starts from its former
/// value.
void StoreDeviceVolume(float volume);

} // namespace velmo::engine
