#pragma once

#include <cstddef>
#include <string>

namespace velmo::bench {

/// Opens an MP3 file with TagLib for its titles and with libmpg123 for its length, and nothing
/// else. How much was found, so that no part of it can be left out.
std::size_t ReadTagsAndLength(const std::string& path);

} // namespace velmo::bench
