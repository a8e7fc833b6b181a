#pragma once

#include "playlist/Adding.h"
#include "ports/Files.h"
#include "ports/Instance.h"

namespace velmo {

/// What the player does with the command line of another process: a file or folder that exists goes
/// to the list, everything else is passed over without a word.
void ReceiveHandOver(const ports::HandOverRecord& record, ports::Files& files, Adding& adding);

} // namespace velmo
