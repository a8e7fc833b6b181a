/// Sound files made for tests: each function gives the bytes of one.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace velmo::test {

/// What a file holds.
using Bytes = std::string;

/// `frames` interleaved frames of tones and some noise, different in every channel, at half of full
/// scale; always the same.
std::vector<float> Noise(std::size_t frames, std::uint32_t channels);

struct SoundShape
{
    std::size_t frames = 44100;
    std::uint32_t channels = 2;
    std::uint32_t sampleRate = 44100;
};

/// A file of interleaved samples in the container and encoding of `sndfileFormat` (SF_FORMAT_
/// numbers).
Bytes MakeSndfile(int sndfileFormat,
                  const std::vector<float>& samples,
                  std::uint32_t channels = 2,
                  std::uint32_t sampleRate = 44100);

/// The same of a tone, at a fifth of full scale on all sides.
Bytes MakeTone(int sndfileFormat,
               double hertz,
               double seconds,
               std::uint32_t channels = 2,
               std::uint32_t sampleRate = 44100);

/// A file of `Noise` that `command` of a shell makes; its encoder has to be installed. In it $in is
/// a WAV file of 16 bits, $out stands for the file to be written, whose name ends in `suffix`. A
/// command without $in is a codec of FFmpeg, and what else that is told. Throws what the program
/// says where it fails.
Bytes Encode(const std::string& command, const std::string& suffix, const SoundShape& shape);

/// `count` silent frames of MPEG 1 layer `layer` (1 or 2), 44.1 kHz stereo.
Bytes MakeSilentMpeg(int layer, std::size_t count);

/// An ID3v2 tag of `bytes` bytes in all, filled with `filler`.
Bytes MakeId3v2(std::size_t bytes, char filler = 0);

/// A module of every kind, by its suffix: songs of two patterns of 64 rows at 125 beats and 6
/// ticks, 15.36 s. "mod" has a note on every 16th row, "umx" holds the same, the others are empty.
std::map<std::string, Bytes> MakeModules();

/// A module that holds one note of `ModulePitch`. A row lasts 0.12 s.
Bytes MakeToneModule(std::size_t rows);

/// A cycle of 32 samples at the rate of the note C-2, 7093789.2 / (2 x 428) Hz.
constexpr double ModulePitch = 7093789.2 / (2 * 428) / 32;

} // namespace velmo::test
