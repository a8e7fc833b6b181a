/// One file of every format, with what the engine shall say of it.
#pragma once

#include "TestFiles.h"

#include "decode/Source.h"

#include <cstdint>
#include <string>
#include <vector>

namespace velmo::test {

enum class Samples
{
    Exact, ///< the decoded samples are `Noise`, to 16 bits
    Alike, ///< they are much like it, in the same places
    Lossy
};

constexpr SoundShape Stereo = {.frames = 100003};
constexpr std::size_t ModuleFrames = 677376; ///< 2 * 64 rows of 6 ticks of 20 ms at 44.1 kHz

struct FileCase
{
    std::string name;
    Bytes bytes;
    std::uint32_t ctype;
    Samples samples;
    SoundShape shape;
    float seekDifference = 0; ///< what a sample may differ by after a seek
    engine::SourceKind kind = engine::SourceKind::Stream;
};

std::vector<FileCase> FileCases();

/// The one of that name.
FileCase CaseOf(const std::vector<FileCase>& cases, const std::string& name);

} // namespace velmo::test
