#pragma once

#include "modBass.h"

#include "ports/Files.h"

#include <string>

namespace velmo {

/// The three attempts by which every file is opened. Each gives a channel handle or 0. `flags` are
/// the library's numbers without `BASS_UNICODE`, which is added. The path is looked up in the file
/// system without regard to case if need be.
DWORD OpenStream(const modBass& bass, ports::Files& files, const std::string& path, DWORD flags);
DWORD OpenModule(const modBass& bass, ports::Files& files, const std::string& path, DWORD flags);

/// Hands the library digits in place of the location, as it always has, so that no location opens:
/// the library answers with 0.
DWORD OpenLocation(const modBass& bass, const std::string& path, DWORD flags);

} // namespace velmo
