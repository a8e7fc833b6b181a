#include "FileWindow.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <new>
#include <utility>

namespace velmo::engine {
namespace {

constexpr std::size_t BufferBytes = 16384;

} // namespace

FileWindow::FileWindow(File file, std::uint64_t begin) noexcept
    : m_file(std::move(file))
    , m_begin(std::min(begin, m_file.Size()))
    , m_end(m_file.Size())
    , m_position(m_begin)
{}

void FileWindow::DropBegin(std::uint64_t bytes) noexcept
{
    m_begin += std::min(bytes, Size());
    m_position = m_begin;
}

void FileWindow::DropEnd(std::uint64_t bytes) noexcept
{
    m_end -= std::min(bytes, Size());
    const std::uint64_t kept = m_end - std::min(m_end, m_bufferStart);
    m_buffered = std::min<std::uint64_t>(m_buffered, kept);
    m_position = std::min(m_position, m_end);
}

bool FileWindow::Seek(std::int64_t position) noexcept
{
    if (position < 0 || static_cast<std::uint64_t>(position) > Size())
        return false;
    m_position = m_begin + static_cast<std::uint64_t>(position);
    return true;
}

std::int64_t FileWindow::Seek(std::int64_t offset, int whence) noexcept
{
    std::int64_t base = 0;
    if (whence == SEEK_CUR)
        base = static_cast<std::int64_t>(Position());
    else if (whence == SEEK_END)
        base = static_cast<std::int64_t>(Size());
    std::int64_t target = 0;
    if (__builtin_add_overflow(base, offset, &target) || !Seek(target))
        return -1;
    return target;
}

std::size_t FileWindow::Read(std::span<std::uint8_t> out) noexcept
{
    std::size_t got = FromBuffer(out);
    if (got == out.size())
        return got;
    // What ends with the window has nothing behind it that would be read next.
    const bool isLast = out.size() - got >= Size() - Position();
    if (out.size() - got < BufferBytes && !isLast && FillBuffer())
        return got + FromBuffer(out.subspan(got));
    const std::size_t direct = ReadAt(Position(), out.subspan(got));
    m_position += direct;
    return got + direct;
}

std::size_t FileWindow::ReadAt(std::uint64_t offset, std::span<std::uint8_t> out) const noexcept
{
    const std::uint64_t left = Size() - std::min(offset, Size());
    const std::size_t wanted = std::min<std::uint64_t>(left, out.size());
    return m_file.ReadAt(m_begin + offset, out.first(wanted));
}

std::size_t FileWindow::FromBuffer(std::span<std::uint8_t> out) noexcept
{
    if (out.empty() || m_position < m_bufferStart || m_position >= m_bufferStart + m_buffered)
        return 0;
    const std::size_t first = m_position - m_bufferStart;
    const std::size_t bytes = std::min(out.size(), m_buffered - first);
    std::memcpy(out.data(), m_buffer.data() + first, bytes);
    m_position += bytes;
    return bytes;
}

bool FileWindow::FillBuffer() noexcept
{
    try {
        m_buffer.resize(BufferBytes);
    } catch (const std::bad_alloc&) {
        return false;
    }
    m_bufferStart = m_position;
    m_buffered = ReadAt(Position(), m_buffer);
    return true;
}

} // namespace velmo::engine
