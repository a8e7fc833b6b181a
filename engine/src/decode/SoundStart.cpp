#include "SoundStart.h"

#include <algorithm>
#include <array>

namespace velmo::engine {
namespace {

constexpr std::size_t HeaderBytes = 10;

/// More tags than this one behind another are not a tag writer's work.
constexpr int MostTags = 16;

} // namespace

std::uint64_t Id3v2Bytes(std::span<const std::uint8_t> head) noexcept
{
    if (head.size() < HeaderBytes || head[0] != 'I' || head[1] != 'D' || head[2] != '3'
        || head[3] == 0xFF || head[4] == 0xFF)
        return 0;
    const auto size = head.subspan(6, 4);
    if (std::ranges::any_of(size, [](std::uint8_t byte) { return byte >= 0x80; }))
        return 0;
    std::uint64_t bytes = 0;
    for (const std::uint8_t byte : size)
        bytes = bytes << 7U | byte;
    const bool hasFooter = (head[5] & 0x10U) != 0;
    return bytes + (hasFooter ? 2 : 1) * HeaderBytes;
}

std::uint64_t SoundStart(const File& file, std::span<const std::uint8_t> head) noexcept
{
    std::uint64_t start = 0;
    for (int tag = 0; tag < MostTags && start < file.Size(); ++tag) {
        std::array<std::uint8_t, HeaderBytes> own = {};
        auto header = head.subspan(std::min<std::uint64_t>(start, head.size()));
        if (header.size() < HeaderBytes)
            header = std::span(own).first(file.ReadAt(start, own));
        const std::uint64_t bytes = Id3v2Bytes(header);
        if (bytes == 0)
            break;
        start += bytes;
    }
    return std::min(start, file.Size());
}

std::uint64_t SoundStart(const File& file) noexcept
{
    return SoundStart(file, {});
}

} // namespace velmo::engine
