#pragma once

#include "core/modINI.h"

#include <cstdint>

namespace velmo {

/// The settings of section "DJ". Each is read at each use, so that a change takes effect at the
/// next track's end.

/// Numbers of the DJ methods that are asked for by name; every other one plays the selected row.
namespace dj_method {

constexpr double Manual = 1;
constexpr double Repeat = 2;
constexpr double LinearDown = 3;
constexpr double LinearUp = 4;
constexpr double Random = 5;
constexpr double RandomErasing = 6;
constexpr double Selected = 7;

} // namespace dj_method

/// What happens when a track ends, by the number of the method; 5 (random) if none is set.
double DjMethod(modINI& settings);

/// Whether tracks overlap or follow without a gap.
bool IsCrossFadeOn(modINI& settings);

/// Seconds before the end of a track at which the next one is prepared; negative: started as well.
std::int32_t CrossFadeDelay(modINI& settings);

/// Whether a random choice must not hit the file that was played last.
bool AssuresNotTheSame(modINI& settings);

} // namespace velmo
