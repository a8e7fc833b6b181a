/// An open file of sound, whatever decoder reads it.
#pragma once

#include "bass_plugin.h"

#include "decode/DecoderList.h"
#include "decode/Result.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace velmo::engine {

enum class SourceKind : std::uint32_t
{
    Stream = BASS_DECODER_STREAM,
    Music = BASS_DECODER_MUSIC
};

/// Owns what a decoder has opened, and keeps the decoder's plugin loaded. One thread at a time.
/// What a plugin's functions throw, or give beyond what they may, goes no further.
class Source
{
public:
    /// Opens `path` (bytes, NUL at the end) with the first decoder of `kind` in `decoders` that
    /// takes it. `deviceRate` in Hz is for those that can choose their rate. Fails with 2 for a
    /// file that cannot be read or is no regular file, with 41 where no decoder of that kind takes
    /// it, with 6 where one knows but cannot play it. Any thread; several at once.
    static Result<std::unique_ptr<Source>> Open(const char* path,
                                                SourceKind kind,
                                                std::uint32_t deviceRate,
                                                std::span<const DecoderEntry> decoders) noexcept;

    Source(const Source&) = delete;
    Source& operator=(const Source&) = delete;
    ~Source();

    const BASS_SOURCE_FORMAT& Format() const noexcept { return m_format; }

    /// What keeps the decoder's plugin loaded; null for one of the engine's own.
    const std::shared_ptr<const void>& Plugin() const noexcept { return m_entry.owner; }

    /// Reads up to `frames` interleaved frames into `out`; fewer than asked only at the end, 0 is
    /// the end. A damaged file may end before its length, none goes on behind it.
    std::size_t Read(float* out, std::size_t frames) noexcept;

    /// Moves to `frame`, 0 to the length: the next read begins there. False, and the place is
    /// unchanged or at the end, if that is beyond the length or the file cannot be read there.
    [[nodiscard]] bool Seek(std::uint64_t frame) noexcept;

private:
    Source(DecoderEntry entry, void* opened, const BASS_SOURCE_FORMAT& format) noexcept;

    DecoderEntry m_entry;
    void* m_opened;
    BASS_SOURCE_FORMAT m_format;
    std::uint64_t m_position = 0; ///< frame that the next read begins with
};

} // namespace velmo::engine
