#pragma once

#include "ports/Files.h"

#include <string>

namespace velmo {

/// Replaces the first line of the list file at `path` by "#ZVL20#" and `title`; all bytes behind
/// that line stay. Kept: if both lines have as many bytes, nothing is written. The title is written
/// in the encoding of the file, a line end in it as a blank; a byte-order mark counts for nothing
/// and goes with the first change. Failure: the file is absent or can't be replaced; it is as it
/// was.
ports::WriteResult RenameList(ports::Files& files,
                              const std::string& path,
                              const std::string& title);

} // namespace velmo
