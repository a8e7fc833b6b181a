#include "WavHeader.h"

#include <algorithm>
#include <string_view>

namespace velmo::engine {

namespace {

constexpr std::uint16_t FormatTagPcm = 1;
constexpr std::uint16_t FormatTagFloat = 3;
constexpr std::uint16_t FormatTagExtensible = 0xFFFE;
constexpr std::size_t ExtensionBytes = 22;
/// What follows a format's tag in the identifier that an extended header has in its place.
constexpr std::string_view FormatIdentifier{"\0\0\x00\x00\x10\x00\x80\x00\x00\xAA\x00\x38\x9B\x71",
                                            14};

bool IsExtended(std::uint32_t channels)
{
    return channels > 2;
}

/// Bits of the speakers in the order of channels: front left, front right, front centre, low
/// frequency, back left, back right, side left, side right.
std::uint32_t SpeakerMask(std::uint32_t channels)
{
    return channels == 8 ? 0x63F : channels == 6 ? 0x3F : 0;
}

/// Bytes of the "fmt " chunk behind its header.
std::size_t FormatBytes(WavFormat format, std::uint32_t channels)
{
    if (IsExtended(channels))
        return 18 + ExtensionBytes;
    return format == WavFormat::Float32 ? 18 : 16;
}

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
    const bool isExtended = IsExtended(channels);
    const std::uint16_t tag = isFloat ? FormatTagFloat : FormatTagPcm;
    const std::size_t frameBytes = WavSampleBytes(format) * channels;
    std::vector<std::uint8_t> header;
    Put(header, "RIFF");
    Put(header, sizes.riff, 4);
    Put(header, "WAVEfmt ");
    Put(header, FormatBytes(format, channels), 4);
    Put(header, isExtended ? FormatTagExtensible : tag, 2);
    Put(header, channels, 2);
    Put(header, sampleRate, 4);
    Put(header, sampleRate * frameBytes, 4);
    Put(header, frameBytes, 2);
    Put(header, 8 * WavSampleBytes(format), 2);
    if (isExtended) {
        Put(header, ExtensionBytes, 2);
        Put(header, 8 * WavSampleBytes(format), 2);
        Put(header, SpeakerMask(channels), 4);
        Put(header, tag, 2);
        Put(header, FormatIdentifier);
    } else if (isFloat) {
        Put(header, 0, 2);
    }
    if (isFloat) {
        Put(header, "fact");
        Put(header, 4, 4);
        Put(header, sizes.frames, 4);
    }
    Put(header, "data");
    Put(header, sizes.data, 4);
    return header;
}

WavSizeOffsets OffsetsOfWavSizes(WavFormat format, std::uint32_t channels)
{
    const std::size_t formatEnd = 20 + FormatBytes(format, channels);
    if (format == WavFormat::Float32)
        return {.riff = 4, .fact = formatEnd + 8, .data = formatEnd + 16};
    return {.riff = 4, .fact = 0, .data = formatEnd + 4};
}

WavSizes SizesOfWav(WavFormat format, std::uint32_t channels, std::uint64_t dataBytes)
{
    const std::uint64_t headerRest = OffsetsOfWavSizes(format, channels).data - 4;
    return {.riff = Clamped(dataBytes + headerRest),
            .frames = Clamped(dataBytes / (WavSampleBytes(format) * channels)),
            .data = Clamped(dataBytes)};
}

std::size_t WavSampleBytes(WavFormat format)
{
    return format == WavFormat::Float32 ? 4 : 2;
}

} // namespace velmo::engine
