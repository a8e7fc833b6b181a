#include "MpegHeader.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace velmo::engine {
namespace {

using BitrateRow = std::array<std::uint16_t, 15>; ///< kbit/s; the first is free format

constexpr BitrateRow Version1Layer1 = {
    0, 32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448};
constexpr BitrateRow Version1Layer2 = {
    0, 32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384};
constexpr BitrateRow Version1Layer3 = {
    0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320};
constexpr BitrateRow Version2Layer1 = {
    0, 32, 48, 56, 64, 80, 96, 112, 128, 144, 160, 176, 192, 224, 256};
constexpr BitrateRow Version2Layer23 = {
    0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160};

constexpr std::array<std::uint32_t, 3> SampleRates = {44100, 48000, 32000};

std::uint32_t BigEndian32(std::span<const std::uint8_t> bytes)
{
    return static_cast<std::uint32_t>(bytes[0]) << 24U | static_cast<std::uint32_t>(bytes[1]) << 16U
           | static_cast<std::uint32_t>(bytes[2]) << 8U | bytes[3];
}

const BitrateRow& Bitrates(std::uint32_t version, std::uint32_t layer)
{
    if (version != 1)
        return layer == 1 ? Version2Layer1 : Version2Layer23;
    if (layer == 1)
        return Version1Layer1;
    return layer == 2 ? Version1Layer2 : Version1Layer3;
}

std::uint32_t FramesOf(std::uint32_t version, std::uint32_t layer)
{
    if (layer == 1)
        return 384;
    return layer == 3 && version != 1 ? 576 : 1152;
}

bool SameKind(const MpegHeader& a, const MpegHeader& b)
{
    return a.version == b.version && a.layer == b.layer && a.sampleRate == b.sampleRate;
}

/// How many headers of one kind follow each other from the first of `bytes` on; counts to three.
/// `reachesEnd` is set if the last of them tells a frame that ends where the bytes end, or later.
int CountFrames(std::span<const std::uint8_t> bytes, bool& reachesEnd)
{
    const std::optional<MpegHeader> first = ParseMpegHeader(bytes);
    std::optional<MpegHeader> next = first;
    int count = 0;
    reachesEnd = false;
    while (next && SameKind(*first, *next) && count < 3) {
        ++count;
        reachesEnd = next->frameBytes + 4 > bytes.size();
        if (reachesEnd)
            break;
        bytes = bytes.subspan(next->frameBytes);
        next = ParseMpegHeader(bytes);
    }
    return count;
}

} // namespace

std::optional<MpegHeader> ParseMpegHeader(std::span<const std::uint8_t> bytes) noexcept
{
    if (bytes.size() < 4 || bytes[0] != 0xFF)
        return std::nullopt;
    const std::uint32_t word = BigEndian32(bytes);
    const std::uint32_t versionBits = word >> 19U & 3U;
    const std::uint32_t layerBits = word >> 17U & 3U;
    const std::uint32_t bitrateIndex = word >> 12U & 15U;
    const std::uint32_t rateIndex = word >> 10U & 3U;
    const bool isReserved =
        versionBits == 1 || layerBits == 0 || rateIndex == 3 || (word & 3U) == 2;
    if (word >> 21U != 0x7FF || isReserved || bitrateIndex == 0 || bitrateIndex == 15)
        return std::nullopt;
    MpegHeader header;
    header.version = versionBits == 3 ? 1 : (versionBits == 2 ? 2 : 3);
    header.layer = 4 - layerBits;
    header.sampleRate = SampleRates.at(rateIndex) >> (header.version - 1);
    header.channels = (word >> 6U & 3U) == 3 ? 1 : 2;
    header.frameFrames = FramesOf(header.version, header.layer);
    const std::uint32_t bitsPerSecond =
        1000U * Bitrates(header.version, header.layer).at(bitrateIndex);
    const std::uint32_t slotBytes = header.layer == 1 ? 4 : 1;
    const std::uint32_t slots =
        header.frameFrames / 8 / slotBytes * bitsPerSecond / header.sampleRate;
    header.frameBytes = (slots + (word >> 9U & 1U)) * slotBytes;
    return header;
}

std::optional<std::size_t> FindFirstMpegFrame(std::span<const std::uint8_t> bytes,
                                              MpegBytes extent) noexcept
{
    for (auto at = bytes.begin(); (at = std::find(at, bytes.end(), 0xFF)) != bytes.end(); ++at) {
        const auto offset = static_cast<std::size_t>(at - bytes.begin());
        bool reachesEnd = false;
        const int count = CountFrames(bytes.subspan(offset), reachesEnd);
        const bool isShortFile = extent == MpegBytes::Whole && reachesEnd;
        if (count >= (offset == 0 || isShortFile ? 2 : 3))
            return offset;
    }
    return std::nullopt;
}

MpegInfo ParseMpegInfo(std::span<const std::uint8_t> frame) noexcept
{
    const std::optional<MpegHeader> header = ParseMpegHeader(frame);
    if (!header || header->layer != 3)
        return {};
    const bool isStereo = header->channels == 2;
    const std::size_t sideInfo = header->version == 1 ? (isStereo ? 32 : 17) : (isStereo ? 17 : 9);
    if (frame.size() < 4 + sideInfo + 16)
        return {};
    const auto info = frame.subspan(4 + sideInfo);
    if (std::memcmp(info.data(), "Xing", 4) != 0 && std::memcmp(info.data(), "Info", 4) != 0)
        return {};
    const std::uint32_t fields = BigEndian32(info.subspan(4));
    if ((fields & 1U) == 0)
        return {};
    return {.frames = BigEndian32(info.subspan(8)),
            .bytes = (fields & 2U) != 0 ? BigEndian32(info.subspan(12)) : 0};
}

} // namespace velmo::engine
