#include "ToneFiles.h"

#include <sndfile.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <memory>
#include <numbers>
#include <stdexcept>
#include <vector>

namespace velmo::test {

namespace {

double Sine(double cycles)
{
    return std::sin(2 * std::numbers::pi * cycles);
}

} // namespace

void WriteTone(const std::string& path, int sndfileFormat, int sampleRate, int channels, Tone tone)
{
    constexpr double Level = 0.2;
    const auto frames = static_cast<std::size_t>(std::lround(tone.seconds * sampleRate));
    const auto sides = static_cast<std::size_t>(channels);
    std::vector<float> samples(frames * sides);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const std::size_t frame = i / sides;
        samples[i] =
            static_cast<float>(Level * Sine(tone.hertz * static_cast<double>(frame) / sampleRate));
    }
    SF_INFO info = {};
    info.samplerate = sampleRate;
    info.channels = channels;
    info.format = sndfileFormat;
    const std::unique_ptr<SNDFILE, int (*)(SNDFILE*)> file(sf_open(path.c_str(), SFM_WRITE, &info),
                                                           &sf_close);
    if (file == nullptr)
        throw std::runtime_error("can't write " + path);
    // In pieces: the Vorbis encoder takes a whole file at once badly.
    constexpr std::size_t Piece = 4096;
    for (std::size_t done = 0; done < frames; done += Piece)
        sf_writef_float(file.get(),
                        samples.data() + done * sides,
                        static_cast<sf_count_t>(std::min(Piece, frames - done)));
}

void WriteToneModule(const std::string& path, int rows)
{
    constexpr std::size_t SampleBytes = 32;
    constexpr std::size_t HeaderBytes = 1084;
    constexpr std::size_t RowBytes = 16;
    std::string module(HeaderBytes + 64 * RowBytes, '\0');
    const auto put = [&](std::size_t place, std::string_view bytes) {
        module.replace(place, bytes.size(), bytes);
    };
    // Sample 1: its length in words, its volume, and its loop; it is all loop.
    put(42, {"\0\x10\0\x40\0\0\0\x10", 8});
    put(950, "\x01\x7f"); // one pattern
    put(1080, "M.K.");
    put(HeaderBytes, {"\x01\xac\x10\0", 4}); // sample 1, period 428
    // Second channel: the pattern ends here.
    put(HeaderBytes + static_cast<std::size_t>(rows - 1) * RowBytes + 6, "\x0d");
    for (std::size_t i = 0; i < SampleBytes; ++i)
        module += static_cast<char>(std::lround(100 * Sine(static_cast<double>(i) / SampleBytes)));
    std::ofstream(path, std::ios::binary) << module;
}

} // namespace velmo::test
