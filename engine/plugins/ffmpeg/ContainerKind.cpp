#include "ContainerKind.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace velmo::engine {
namespace {

using Head = std::span<const std::uint8_t>;

bool HasAt(Head head, std::size_t offset, std::string_view text) noexcept
{
    return head.size() >= offset + text.size()
           && std::equal(
               text.begin(),
               text.end(),
               head.begin() + static_cast<std::ptrdiff_t>(offset),
               [](char c, std::uint8_t byte) { return static_cast<std::uint8_t>(c) == byte; });
}

struct Magic
{
    std::size_t offset;
    std::string_view text;
    ContainerKind kind;
};

constexpr std::array Magics = {
    Magic{4, "ftyp",                             ContainerKind::Mp4      },
    Magic{4, "moov",                             ContainerKind::Mp4      },
    Magic{4, "wide",                             ContainerKind::Mp4      },
    Magic{0, "\x30\x26\xB2\x75\x8E\x66\xCF\x11", ContainerKind::Asf      },
    Magic{0, "MAC ",                             ContainerKind::Ape      },
    Magic{0, "MP+",                              ContainerKind::Musepack7},
    Magic{0, "MPCK",                             ContainerKind::Musepack8},
    Magic{0, "TTA1",                             ContainerKind::Tta      },
};

constexpr std::size_t FrameHeaderBytes = 7;

/// Length in bytes of the ADTS frame at the head's beginning; 0 if there is none. After ISO
/// 13818-7, section 6.2.
std::size_t AdtsFrameBytes(Head head) noexcept
{
    if (head.size() < FrameHeaderBytes || head[0] != 0xFF || (head[1] & 0xF6U) != 0xF0)
        return 0;
    const unsigned rate = head[2] >> 2U & 0xFU;
    const std::size_t bytes = (head[3] & 3U) << 11U | head[4] << 3U | head[5] >> 5U;
    return rate < 13 && bytes > FrameHeaderBytes ? bytes : 0;
}

/// Which of the two formats the frame at the head's beginning has.
ContainerKind Ac3Kind(Head head) noexcept
{
    if (head.size() < FrameHeaderBytes || head[0] != 0x0B || head[1] != 0x77)
        return ContainerKind::None;
    const unsigned version = head[5] >> 3U;
    return version <= 10   ? ContainerKind::Ac3
           : version <= 16 ? ContainerKind::Eac3
                           : ContainerKind::None;
}

/// Length in bytes of such a frame; 0 if there is none. After ETSI TS 102 366, sections 4.4.1.4 and
/// E.1.3.1.3.
std::size_t Ac3FrameBytes(Head head) noexcept
{
    constexpr std::array<std::size_t, 19> Kilobits = {
        32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384, 448, 512, 576, 640};
    const ContainerKind kind = Ac3Kind(head);
    if (kind == ContainerKind::Eac3)
        return 2 * (((head[2] & 7U) << 8U | head[3]) + std::size_t{1});
    const std::size_t code = head.size() < FrameHeaderBytes ? 63 : head[4] & 63U;
    if (kind == ContainerKind::None || code / 2 >= Kilobits.size())
        return 0;
    const std::size_t kilobits = Kilobits.at(code / 2);
    switch (head[4] >> 6U) {
    case 0: return kilobits * 4;
    case 1: return 2 * (kilobits * 96000 / 44100 + code % 2);
    case 2: return kilobits * 6;
    default: return 0;
    }
}

/// True if frames of the head's first one's kind stand one behind the other: two, and a third where
/// the head is long enough.
template<typename FrameBytes>
bool FramesFollow(Head head, FrameBytes frameBytes) noexcept
{
    const Head first = head;
    for (int frame = 0; frame < 3; ++frame) {
        const std::size_t bytes = frameBytes(head);
        if (bytes == 0 || head[1] != first[1])
            return frame == 2 && head.size() < FrameHeaderBytes;
        if (bytes > head.size())
            return frame > 0;
        head = head.subspan(bytes);
    }
    return true;
}

} // namespace

ContainerKind TellContainer(Head head) noexcept
{
    for (const Magic& magic : Magics)
        if (HasAt(head, magic.offset, magic.text))
            return magic.kind;
    if (FramesFollow(head, &AdtsFrameBytes))
        return ContainerKind::Adts;
    return FramesFollow(head, &Ac3FrameBytes) ? Ac3Kind(head) : ContainerKind::None;
}

} // namespace velmo::engine
