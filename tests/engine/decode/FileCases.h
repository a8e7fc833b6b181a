/// One file of every format, with what the engine shall say of it.
#pragma once

#include "TestFiles.h"

#include "decode/Source.h"

#include <cstdint>
#include <vector>

namespace velmo::test {

enum class Samples
{
    Exact, ///< the decoded samples are `Noise`, to 16 bits
    Alike, ///< they are much like it, in the same places
    Lossy
};

struct FileCase
{
    const char* name;
    Bytes bytes;
    std::uint32_t ctype;
    std::size_t frames;
    Samples samples = Samples::Lossy;
    engine::SourceKind kind = engine::SourceKind::Stream;
    std::uint32_t channels = 2;
    std::uint32_t sampleRate = 44100;
    float seekDifference = 0; ///< what a sample may differ by after a seek
};

std::vector<FileCase> FileCases();

/// Those of plugins alone.
std::vector<FileCase> PluginCases();

} // namespace velmo::test
