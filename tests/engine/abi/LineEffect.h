#pragma once

#include "bass_effect.h"

#include <array>

namespace velmo::engine::test {

/// Record of the effect of type `LineType`: a factor, and what is added after it.
using Line = std::array<float, 2>;

constexpr DWORD LineType = 0x7001;

/// It refuses a factor that is no number.
const BASS_EFFECT& LineTable();

/// How many such effects there are.
int LineEffects();

} // namespace velmo::engine::test
