#pragma once

#include "EntryText.h"
#include "ListFormats.h"

#include "controls/ListRows.h"
#include "ports/Files.h"

#include <string>

namespace velmo {

/// Adds the entries of the list file at `path` to `rows`. False for a foreign header. Raises a
/// `RunError` if the file can't be read, or ends within an entry; what was read stays.
bool ReadListFile(ListFormat format,
                  const std::string& path,
                  ports::Files& files,
                  const EntryStyle& style,
                  controls::ListRows& rows);

/// The first line of the file at `path`, without its line end; empty if it can't be read. Of a long
/// file as a rule only the start is read.
std::string FirstLineOfFile(const std::string& path, ports::Files& files);

} // namespace velmo
