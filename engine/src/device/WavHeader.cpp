#include "WavHeader.h"

#include <algorithm>
#include <string_view>

namespace velmo::engine {

namespace {

constexpr std::uint16_t FormatTagPcm = 1;
constexpr std::uint16_t FormatTagFloat = 3;

void Put(std::vector<std::uint8_t>& out, std::string_view text)
{
    out.insert(out.end(), text.begin(), text.end());
}

void Put(std::vector<std::uint8_t>& out, std::uint64_t value, unsigned bytes)
{
    for (unsigned i = 0; i < bytes; ++i)
        out.push_back(static_cast<std::uint8_t>(value >> (8 * i) & 0xFF));
}

std::uint32_t Clamped(std::uint64_t size)
{
    return static_cast<std::uint32_t>(std::min<std::uint64_t>(size, WavSizeUnknown));
}

} // namespace

std::vector<std::uint8_t> WavHeader(WavFormat format,
                                    std::uint32_t sampleRate,
                                    std::uint32_t channels,
                                    const WavSizes& sizes)
{
    const bool isFloat = format == WavFormat::Float32;
    const std::size_t frameBytes = WavSampleBytes(format) * channels;
    std::vector<std::uint8_t> header;
    Put(header, "RIFF");
    Put(header, sizes.riff, 4);
    Put(header, "WAVEfmt ");
    Put(header, isFloat ? 18 : 16, 4);
    Put(header, isFloat ? FormatTagFloat : FormatTagPcm, 2);
    Put(header, channels, 2);
    Put(header, sampleRate, 4);
    Put(header, sampleRate * frameBytes, 4);
    Put(header, frameBytes, 2);
    Put(header, 8 * WavSampleBytes(format), 2);
    if (isFloat) {
        Put(header, 0, 2);
        Put(header, "fact");
        Put(header, 4, 4);
        Put(header, sizes.frames, 4);
    }
    Put(header, "data");
    Put(header, sizes.data, 4);
    return header;
}

WavSizeOffsets OffsetsOfWavSizes(WavFormat format)
{
    if (format == WavFormat::Float32)
        return {.riff = 4, .fact = 46, .data = 54};
    return {.riff = 4, .fact = 0, .data = 40};
}

WavSizes SizesOfWav(WavFormat format, std::uint32_t channels, std::uint64_t dataBytes)
{
    const std::uint64_t headerRest = OffsetsOfWavSizes(format).data - 4;
    return {.riff = Clamped(dataBytes + headerRest),
            .frames = Clamped(dataBytes / (WavSampleBytes(format) * channels)),
            .data = Clamped(dataBytes)};
}

std::size_t WavSampleBytes(WavFormat format)
{
    return format == WavFormat::Float32 ? 4 : 2;
}

} // namespace velmo::engine
