#pragma once

#include <string>

namespace velmo::test {

/// A tone of one pitch, at a fifth of full scale on both sides.
struct Tone
{
    double hertz = 0;
    double seconds = 0;
};

/// Writes the tone to `path` in the container and encoding of `sndfileFormat` (SF_FORMAT_ numbers).
void WriteTone(const std::string& path, int sndfileFormat, int sampleRate, int channels, Tone tone);

/// Writes a ProTracker module that holds one note. A row lasts 0.12 s.
/// The pitch is `ModulePitch`.
void WriteToneModule(const std::string& path, int rows);

/// A cycle of 32 samples at the rate of the note C-2, 7093789.2 / (2 x 428) Hz.
constexpr double ModulePitch = 7093789.2 / (2 * 428) / 32;

} // namespace velmo::test
