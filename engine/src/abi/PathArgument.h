#pragma once

#include "bass.h"

#include <optional>
#include <string>

namespace velmo::engine {

/// The bytes of the path that a caller gives as bytes, or as UTF-16 where `flags` holds
/// `BASS_UNICODE`; U+DC80 to U+DCFF alone stand for the bytes 0x80 to 0xFF, of which no text is
/// made. Empty without a path.
std::optional<std::string> PathArgument(const void* file, DWORD flags);

} // namespace velmo::engine
