#include "MusepackHeader.h"

#include <cstddef>

namespace velmo::engine {
namespace {

using Head = std::span<const std::uint8_t>;

constexpr std::uint64_t SynthesisDelay = 481;
constexpr std::uint64_t FrameLength = 1152;

std::uint32_t LittleEndian32(Head bytes) noexcept
{
    return bytes[0] | bytes[1] << 8U | bytes[2] << 16U | std::uint32_t{bytes[3]} << 24U;
}

std::optional<MusepackSound> TellVersion7(Head head) noexcept
{
    if (head.size() < 24)
        return std::nullopt;
    const std::uint64_t frames = LittleEndian32(head.subspan(4)) * FrameLength;
    const std::uint32_t end = LittleEndian32(head.subspan(20));
    const bool tellsLast = end >> 31U != 0;
    const std::uint64_t last = end >> 20U & 0x7FFU;
    const std::uint64_t missing = !tellsLast                       ? SynthesisDelay
                                  : last > 0 && last < FrameLength ? FrameLength - last
                                                                   : 0;
    return MusepackSound{.delayFrames = SynthesisDelay,
                         .lengthFrames = frames > missing ? frames - missing : 0};
}

/// Takes a number off the front: seven bits a byte, the highest first; a byte with its upper bit
/// set is not the last. Empty where it doesn't end.
std::optional<std::uint64_t> TakeNumber(Head& head) noexcept
{
    constexpr int MostBytes = 8;
    std::uint64_t number = 0;
    for (int i = 0; i < MostBytes && !head.empty(); ++i) {
        const std::uint8_t byte = head.front();
        head = head.subspan(1);
        number = number << 7U | (byte & 0x7FU);
        if (byte < 0x80)
            return number;
    }
    return std::nullopt;
}

/// The packet "SH" comes first: its size, a check sum of four bytes, the version, the count of
/// frames, and how many of them are silent at the beginning and not part of the sound.
std::optional<MusepackSound> TellVersion8(Head head) noexcept
{
    constexpr std::size_t MagicBytes = 4;
    constexpr std::size_t CheckAndVersionBytes = 5;
    if (head.size() < MagicBytes + 2 || head[MagicBytes] != 'S' || head[MagicBytes + 1] != 'H')
        return std::nullopt;
    head = head.subspan(MagicBytes + 2);
    if (!TakeNumber(head) || head.size() < CheckAndVersionBytes)
        return std::nullopt;
    head = head.subspan(CheckAndVersionBytes);
    const auto frames = TakeNumber(head);
    const auto silent = TakeNumber(head);
    if (!frames || !silent || *silent > *frames)
        return std::nullopt;
    return MusepackSound{.delayFrames = SynthesisDelay + *silent,
                         .lengthFrames = *frames - *silent};
}

} // namespace

std::optional<MusepackSound> TellMusepackSound(ContainerKind kind, Head head) noexcept
{
    switch (kind) {
    case ContainerKind::Musepack7: return TellVersion7(head);
    case ContainerKind::Musepack8: return TellVersion8(head);
    default: return std::nullopt;
    }
}

} // namespace velmo::engine
