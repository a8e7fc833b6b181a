#include "TestFiles.h"

#include "support/TempDir.h"

#include <sndfile.h>

#include <cmath>
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

Bytes MakeSndfile(int sndfileFormat, const SoundShape& shape)
{
    const TempDir folder;
    SF_INFO info = {};
    info.samplerate = static_cast<int>(shape.sampleRate);
    info.channels = static_cast<int>(shape.channels);
    info.format = sndfileFormat;
    SNDFILE* const file = sf_open(folder("file").c_str(), SFM_WRITE, &info);
    if (file == nullptr)
        throw std::runtime_error(sf_strerror(nullptr));
    sf_writef_float(
        file, Noise(shape.frames, shape.channels).data(), static_cast<sf_count_t>(shape.frames));
    sf_close(file);
    return folder.Read("file");
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
