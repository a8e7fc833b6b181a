/// Where the sound's own file begins behind tags of other kinds.
#pragma once

#include "decode/File.h"

#include <cstdint>
#include <span>

namespace velmo::engine {

/// Length in bytes of the ID3v2 tag that `head` begins with, the tag's header and footer included;
/// 0 if it begins with none. 10 bytes of `head` are enough. After the ID3v2.4 structure document,
/// section 3.1.
std::uint64_t Id3v2Bytes(std::span<const std::uint8_t> head) noexcept;

/// Byte of the file at which the sound's own file begins: behind all ID3v2 tags in front. `head` is
/// what the file begins with; the file is read only where a tag reaches beyond it. May be as large
/// as the file, where there is nothing behind the tags.
std::uint64_t SoundStart(const File& file, std::span<const std::uint8_t> head) noexcept;

/// The same, with the head read from the file.
std::uint64_t SoundStart(const File& file) noexcept;

} // namespace velmo::engine
