/// Frame headers of MPEG audio: recognising a file, and the length that its first frame tells.
///
/// A sync word alone stands in every other file by chance. A file is taken for MPEG where headers
/// of one and the same kind follow each other at the distance that each one's frame length tells:
/// two at the very beginning, three where other bytes stand in front.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace velmo::engine {

/// What one frame's header says. After ISO 11172-3, section 2.4.2.3, and ISO 13818-3.
struct MpegHeader
{
    std::uint32_t version = 1;     ///< 1, 2, or 3 for 2.5
    std::uint32_t layer = 3;       ///< 1 to 3
    std::uint32_t sampleRate = 0;  ///< Hz
    std::uint32_t channels = 2;    ///< 1 or 2
    std::uint32_t frameBytes = 0;  ///< with the header
    std::uint32_t frameFrames = 0; ///< sample frames that one frame holds
};

/// The header in the first four of `bytes`; empty where they are none. Free format, which tells no
/// frame length, is none.
std::optional<MpegHeader> ParseMpegHeader(std::span<const std::uint8_t> bytes) noexcept;

/// Whether `bytes` reach to the end of the file.
enum class MpegBytes
{
    Begin,
    Whole
};

/// Offset in `bytes` of the first frame by the rule above; empty if there is none. Where the whole
/// file stands in `bytes`, a third frame is not asked for behind the end.
std::optional<std::size_t> FindFirstMpegFrame(std::span<const std::uint8_t> bytes,
                                              MpegBytes extent) noexcept;

/// What the Xing or Info header in the first frame tells; both 0 where there is none.
struct MpegInfo
{
    std::uint32_t frames = 0; ///< MPEG frames of the file
    std::uint32_t bytes = 0;  ///< length of the whole stream
};

/// Reads it from the first frame, which `frame` begins with.
MpegInfo ParseMpegInfo(std::span<const std::uint8_t> frame) noexcept;

} // namespace velmo::engine
