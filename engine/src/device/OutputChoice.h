#pragma once

#include <string>
#include <string_view>

namespace velmo::engine {

enum class OutputKind
{
    System,   ///< the sound server or the sound card
    Null,     ///< "null"
    Wav,      ///< "wav:PATH", in real time
    WavFast,  ///< "wav-fast:PATH", as fast as blocks can be made
    NotKnown, ///< anything else
};

struct OutputChoice
{
    OutputKind kind = OutputKind::System;
    std::string path; ///< of the file to write
};

/// What the value of VELMO_AUDIO asks for; unset counts as empty.
[[nodiscard]] OutputChoice ParseOutputChoice(std::string_view value);

/// A variable of the environment; empty if it's unset.
[[nodiscard]] std::string EnvironmentText(const char* name);

} // namespace velmo::engine
