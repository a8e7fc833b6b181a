#pragma once

#include "TagFields.h"

#include <string>

namespace velmo::tags {

/// The texts that AIFF has chunks of its own for: name, author, copyright, annotation. All empty if
/// there are none, or the file can't be read.
TagFields ReadAiffTexts(const std::string& path);

} // namespace velmo::tags
