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
    const auto word = [](std::size_t bytes) {
        return std::string{static_cast<char>(bytes / 2 >> 8U), static_cast<char>(bytes / 2)};
    };
    std::string module(20, '\0');
    for (int sample = 0; sample < 31; ++sample) {
        const bool used = sample == 0;
        module += std::string(22, '\0') + word(used ? SampleBytes : 0) + '\0' // no fine tune
                  + static_cast<char>(used ? 64 : 0) + word(0)
                  + word(used ? SampleBytes : 2); // the loop
    }
    module += '\x01';
    module += '\x7f';
    module += std::string(128, '\0') + "M.K.";
    std::string pattern(std::size_t{64} * 4 * 4, '\0');
    pattern.replace(0, 4, std::string{'\x01', '\xac', '\x10', '\0'}); // sample 1, period 428
    const std::size_t lastRow = static_cast<std::size_t>(rows - 1) * 16;
    pattern[lastRow + 6] = '\x0d'; // second channel: the pattern ends here
    module += pattern;
    for (std::size_t i = 0; i < SampleBytes; ++i)
        module += static_cast<char>(std::lround(100 * Sine(static_cast<double>(i) / SampleBytes)));
    std::ofstream(path, std::ios::binary) << module;
}

} // namespace velmo::test
