#include "TestFiles.h"

#include "support/TempDir.h"

#include <sndfile.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numbers>
#include <stdexcept>

/// Read by the leak detector, where there is one: the libraries of Vorbis and Opus keep some bytes
/// of a damaged file that they refuse.
extern "C" __attribute__((visibility("default"))) const char*
__lsan_default_suppressions() // NOLINT(bugprone-reserved-identifier,cert-*,readability-identifier-naming):
                              // its name
{
    return "leak:libvorbisfile.so\nleak:libopusfile.so\n";
}

namespace velmo::test {

std::vector<float> Noise(std::size_t frames, std::uint32_t channels)
{
    std::vector<float> samples(frames * channels);
    std::uint32_t random = 1;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        random = random * 1664525U + 1013904223U;
        const double step = 0.02 * static_cast<double>(i % channels + 1);
        const double tone = std::sin(step * std::floor(static_cast<double>(i) / channels));
        const double noise = static_cast<double>(random >> 8U) / (1U << 23U) - 1.0;
        samples[i] = static_cast<float>(0.4 * tone + 0.1 * noise);
    }
    return samples;
}

Bytes MakeSndfile(int sndfileFormat,
                  const std::vector<float>& samples,
                  std::uint32_t channels,
                  std::uint32_t sampleRate)
{
    const TempDir folder;
    SF_INFO info = {};
    info.samplerate = static_cast<int>(sampleRate);
    info.channels = static_cast<int>(channels);
    info.format = sndfileFormat;
    SNDFILE* const file = sf_open(folder("file").c_str(), SFM_WRITE, &info);
    if (file == nullptr)
        throw std::runtime_error(sf_strerror(nullptr));
    // In pieces: the Vorbis encoder takes a whole file at once badly.
    const std::size_t piece = std::size_t{4096} * channels;
    for (std::size_t done = 0; done < samples.size(); done += piece) {
        const std::size_t count = std::min(piece, samples.size() - done);
        sf_write_float(file, samples.data() + done, static_cast<sf_count_t>(count));
    }
    sf_close(file);
    return folder.Read("file");
}

Bytes MakeTone(int sndfileFormat,
               double hertz,
               double seconds,
               std::uint32_t channels,
               std::uint32_t sampleRate)
{
    std::vector<float> samples;
    for (int frame = 0; frame < std::lround(seconds * sampleRate); ++frame) {
        const double turn = 2 * std::numbers::pi * hertz * frame / sampleRate;
        samples.insert(samples.end(), channels, static_cast<float>(0.2 * std::sin(turn)));
    }
    return MakeSndfile(sndfileFormat, samples, channels, sampleRate);
}

Bytes Encode(const std::string& command, const std::string& suffix, const SoundShape& shape)
{
    if (command.find("$in") == std::string::npos)
        return Encode("ffmpeg -nostdin -v error -i $in -c:a " + command + " $out", suffix, shape);
    // More than two channels have places only in the extended header.
    const int container = shape.channels > 2 ? SF_FORMAT_WAVEX : SF_FORMAT_WAV;
    const TempDir folder;
    folder.Write("in.wav",
                 MakeSndfile(container | SF_FORMAT_PCM_16,
                             Noise(shape.frames, shape.channels),
                             shape.channels,
                             shape.sampleRate));
    const std::string line = "cd '" + folder() + "' && in=in.wav && out=out" + suffix + " && { "
                             + command + "; } >said 2>&1 </dev/null";
    // NOLINTNEXTLINE(cert-env33-c,concurrency-mt-unsafe): a program that tests alone run
    if (std::system(line.c_str()) != 0)
        throw std::runtime_error(command + ": " + folder.Read("said"));
    return folder.Read("out" + suffix);
}

Bytes MakeSilentMpeg(int layer, std::size_t count)
{
    // Bit allocations of zero: no band has samples. Layer 1 at 384 kbit/s, 416 bytes; layer 2 at
    // 128 kbit/s, 417 bytes.
    Bytes frame = layer == 1 ? "\xFF\xFF\xC0" : "\xFF\xFD\x80";
    frame.resize(layer == 1 ? 416 : 417);
    Bytes bytes;
    for (std::size_t i = 0; i < count; ++i)
        bytes += frame;
    return bytes;
}

Bytes MakeId3v2(std::size_t bytes, char filler)
{
    Bytes tag("ID3\4\0\0", 6);
    for (const unsigned shift : {21U, 14U, 7U, 0U})
        tag += static_cast<char>((bytes - 10) >> shift & 0x7FU);
    tag.resize(bytes, filler);
    return tag;
}

} // namespace velmo::test
