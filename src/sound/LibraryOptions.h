#pragma once

#include "bass/modBass.h"
#include "core/modINI.h"

#include <optional>
#include <string>

namespace velmo {

/// Gives the library its options by section "Sound", read now. What the library refuses is passed
/// over. Works before `BASS_Init` too.
void ApplyLibraryOptions(const modBass& bass, modINI& settings);

/// The number of a 3D algorithm by its name in the settings, without regard to case; nothing for a
/// name that is none.
std::optional<DWORD> AlgorithmNumber(const std::string& name);

} // namespace velmo
