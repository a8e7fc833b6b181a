/// A part of a file, read in sequence through a buffer.
///
/// The decoding libraries read in very different pieces, some a few bytes at a time. They all read
/// through a window, which fetches a larger piece at once and passes large reads straight on. The
/// window also hides the tags that stand in front of the sound: its position 0 is where the sound's
/// own file begins.
#pragma once

#include "decode/File.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace velmo::engine {

/// Bytes `begin` to `end` of a file, with a reading position. Owns the file. One thread at a time.
class FileWindow
{
public:
    /// The bytes from `begin` on. Beyond the file's end the window is empty.
    FileWindow(File file, std::uint64_t begin) noexcept;

    std::uint64_t Size() const noexcept { return m_end - m_begin; }
    std::uint64_t Position() const noexcept { return m_position - m_begin; }

    /// Takes `bytes` off the window's beginning; what is position 0 moves on, and reading begins
    /// there.
    void DropBegin(std::uint64_t bytes) noexcept;

    /// Takes `bytes` off the window's end; a reading position behind it becomes the end.
    void DropEnd(std::uint64_t bytes) noexcept;

    /// Moves the reading position; false, and nothing changed, for one below 0 or beyond the end.
    bool Seek(std::int64_t position) noexcept;

    /// The same as `lseek` and `fseek` have it: `whence` is SEEK_SET, SEEK_CUR or SEEK_END. Gives
    /// the new position, or -1.
    std::int64_t Seek(std::int64_t offset, int whence) noexcept;

    /// Reads on; gives how many bytes were read, fewer only at the window's end. Allocates its
    /// buffer at the first small read; where there is no memory for it, it reads without.
    std::size_t Read(std::span<std::uint8_t> out) noexcept;

    /// Reads at `offset` of the window; neither moves the reading position nor uses the buffer.
    std::size_t ReadAt(std::uint64_t offset, std::span<std::uint8_t> out) const noexcept;

private:
    std::size_t FromBuffer(std::span<std::uint8_t> out) noexcept;
    bool FillBuffer() noexcept;

    File m_file;
    std::uint64_t m_begin = 0;
    std::uint64_t m_end = 0;
    std::uint64_t m_position = 0; ///< byte of the file
    std::vector<std::uint8_t> m_buffer;
    std::uint64_t m_bufferStart = 0; ///< byte of the file that the buffer begins with
    std::size_t m_buffered = 0;      ///< bytes of the buffer that hold something
};

} // namespace velmo::engine
