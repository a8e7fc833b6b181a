#pragma once

#include "ports/MixerProgram.h"

#include <string>
#include <vector>

namespace velmo {

/// The first program of the usual ones that stands in PATH.
class LinuxMixerProgram final : public ports::MixerProgram
{
public:
    /// Starts it detached: in a session of its own, and nobody's child.
    void Start() override;
};

/// Path and arguments of the first of the known mixer programs that can be run, looked for in the
/// directories of `searchPath`, which are parted by ":"; empty if there is none.
std::vector<std::string> FindMixerProgram(const std::string& searchPath);

} // namespace velmo
