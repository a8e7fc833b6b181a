#pragma once

#include <cstdint>
#include <string>

namespace velmo::bench {

/// Decodes up to `seconds` of the file to nothing with the bare library of its kind, as its manual
/// shows it, in blocks of 4096 frames; returns the frames. The kind is told by the name's end: mp3,
/// ogg, wav or mod.
std::uint64_t BareDecode(const std::string& path, double seconds);

} // namespace velmo::bench
