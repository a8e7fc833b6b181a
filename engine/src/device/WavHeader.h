#pragma once

#include "WavFile.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace velmo::engine {

/// Size fields of a WAVE file's header, for `dataBytes` of sound; what is too large for them is all
/// ones.
struct WavSizes
{
    std::uint32_t riff = 0;
    std::uint32_t frames = 0; ///< of the "fact" chunk
    std::uint32_t data = 0;
};

/// Where the size fields stand, in bytes from the file's start. `fact` is 0 if there's none.
struct WavSizeOffsets
{
    std::size_t riff = 0;
    std::size_t fact = 0;
    std::size_t data = 0;
};

inline constexpr std::uint32_t WavSizeUnknown = 0xFFFFFFFF;

/// Header in front of the sound: 44 bytes for PCM, 58 for float, which has an extended "fmt " and a
/// "fact" chunk. After "Multimedia Programming Interface and Data Specifications 1.0" and its
/// revision "New Multimedia Data Types and Data Techniques". With more than two channels it's 68
/// and 80 bytes, and says which speaker each is for. After "Multiple Channel Audio Data and WAVE
/// Files".
[[nodiscard]] std::vector<std::uint8_t> WavHeader(WavFormat format,
                                                  std::uint32_t sampleRate,
                                                  std::uint32_t channels,
                                                  const WavSizes& sizes);

[[nodiscard]] WavSizeOffsets OffsetsOfWavSizes(WavFormat format, std::uint32_t channels);

[[nodiscard]] WavSizes SizesOfWav(WavFormat format,
                                  std::uint32_t channels,
                                  std::uint64_t dataBytes);

/// Bytes of one sample.
[[nodiscard]] std::size_t WavSampleBytes(WavFormat format);

} // namespace velmo::engine
