#include "OutputChoice.h"

#include <cstdlib>

namespace velmo::engine {

OutputChoice ParseOutputChoice(std::string_view value)
{
    constexpr std::string_view WavPrefix = "wav:";
    constexpr std::string_view WavFastPrefix = "wav-fast:";
    if (value.empty())
        return {};
    if (value == "null")
        return {.kind = OutputKind::Null, .path = {}};
    if (value.starts_with(WavPrefix))
        return {.kind = OutputKind::Wav, .path = std::string(value.substr(WavPrefix.size()))};
    if (value.starts_with(WavFastPrefix))
        return {.kind = OutputKind::WavFast,
                .path = std::string(value.substr(WavFastPrefix.size()))};
    return {.kind = OutputKind::NotKnown, .path = {}};
}

std::string EnvironmentText(const char* name)
{
    // Nobody changes the environment while the engine runs.
    // NOLINTNEXTLINE(concurrency-mt-unsafe)
    const char* const value = std::getenv(name);
    return value == nullptr ? std::string() : std::string(value);
}

} // namespace velmo::engine
