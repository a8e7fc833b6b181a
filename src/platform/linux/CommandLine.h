#pragma once

#include "ports/Files.h"

#include <span>
#include <string>

namespace velmo {

/// The command line as one raw text: the arguments (without the program's own name) joined by one
/// blank, so that a name with blanks needs no quotes. A "file://" location is decoded. A relative
/// path of something that exists becomes absolute against `entryDirectory`, the current directory
/// at process entry; any other text stays as it is.
std::string CommandLineText(std::span<const std::string> arguments,
                            const std::string& entryDirectory,
                            ports::Files& files);

} // namespace velmo
