#pragma once

#include "bass/modBass.h"
#include "core/modINI.h"

#include <string_view>

namespace velmo {

/// No environment: what `ReverbEnvironment` gives for "None".
constexpr int NoEnvironment = -1;

/// The number of the environment that a preset names, 0 to 25; `NoEnvironment` for "None" and for
/// every name that is not one of the table, in exactly its case.
int ReverbEnvironment(std::string_view preset);

/// Sets the reverb by section "Sound", read now; for a preset without environment nothing is set.
/// What the library refuses is passed over.
void ApplyReverb(const modBass& bass, modINI& settings);

} // namespace velmo
