#pragma once

#include <string_view>

namespace velmo::engine {

/// Writes "velmo: " and `text` as one line to the standard error output. Any thread but an
/// output's.
void Report(std::string_view text);

} // namespace velmo::engine
