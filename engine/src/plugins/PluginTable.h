/// The table that a plugin exports, looked at before anything of it is used.
#pragma once

#include "bass_plugin.h"

#include <cstddef>

namespace velmo::engine {

/// True if `table`, an object of `size` bytes, is one that can be used: of this version, with a
/// decoder that has all its functions, and with no more formats and no longer texts than make
/// sense. No formats at all are well. Pointers other than null are taken to be good. Any thread.
bool IsUsablePlugin(const BASS_PLUGIN* table, std::size_t size) noexcept;

} // namespace velmo::engine
