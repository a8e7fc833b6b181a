#pragma once

#include "ports/Files.h"

#include <string>
#include <string_view>

namespace velmo {

/// Replaces the content of the file at that exact path, by the rules of
/// `ports::Files::ReplaceFile`. A process that is killed on the way leaves the old file or the new
/// one, and at worst a temporary beside it whose name begins with ".velmo-".
[[nodiscard]] ports::WriteResult ReplaceFileAt(const std::string& path,
                                               std::string_view content,
                                               unsigned newFileMode);

/// The same by the rules of `ports::Files::ReplaceFileInPieces`.
[[nodiscard]] ports::WriteResult ReplaceFileAt(const std::string& path,
                                               const ports::ContentPieces& next,
                                               unsigned newFileMode);

} // namespace velmo
