#pragma once

#include <string>

namespace velmo::tags {

/// Bytes of a tag that doesn't say how its text is written, as UTF-8: as they are where they are
/// valid UTF-8, else taken as Windows-1252.
std::string DecodedText(const std::string& bytes);

} // namespace velmo::tags
