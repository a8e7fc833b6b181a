#include "Report.h"

#include <string>

#include <unistd.h>

namespace velmo::engine {

void Report(std::string_view text)
{
    const std::string line = "velmo: " + std::string(text) + "\n";
    // Nobody is left to be told when that fails.
    [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, line.data(), line.size());
}

} // namespace velmo::engine
