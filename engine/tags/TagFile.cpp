#include "TagFile.h"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace velmo::tags {

TagFile::TagFile(const std::string& path)
    : m_path(path)
    , m_descriptor(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC))
{
    struct stat status = {};
    if (m_descriptor < 0)
        return;
    if (::fstat(m_descriptor, &status) == 0 && S_ISREG(status.st_mode)) {
        m_length = status.st_size;
        return;
    }
    ::close(m_descriptor);
    m_descriptor = -1;
}

TagFile::~TagFile()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

void TagFile::seek(long offset, Position from)
{
    long base = 0;
    if (from == Current)
        base = m_position;
    else if (from == End)
        base = m_length;
    long target = 0;
    if (!__builtin_add_overflow(base, offset, &target) && target >= 0)
        m_position = target;
}

TagLib::ByteVector TagFile::readBlock(unsigned long length)
{
    const auto left = static_cast<unsigned long>(m_length - std::min(m_position, m_length));
    const auto size = static_cast<long>(std::min(length, left));
    TagLib::ByteVector block;
    if (size > PieceBytes) {
        block.resize(static_cast<unsigned int>(size));
        block.resize(static_cast<unsigned int>(ReadAt(m_position, block.data(), size)));
    } else if (size > 0) {
        const Piece& piece = PieceWith(m_position, size);
        const long first = m_position - piece.start;
        const long held = std::min(size, piece.size - std::min(first, piece.size));
        block.setData(piece.bytes.data() + first, static_cast<unsigned int>(held));
    }
    m_position += static_cast<long>(block.size());
    return block;
}

/// Gives how many bytes were read.
long TagFile::ReadAt(long offset, char* out, long size) const
{
    long got = 0;
    while (got < size) {
        const ssize_t bytes =
            ::pread(m_descriptor, out + got, static_cast<std::size_t>(size - got), offset + got);
        if (bytes < 0 && errno == EINTR)
            continue;
        if (bytes <= 0)
            break;
        got += bytes;
    }
    return got;
}

/// A piece that holds these bytes, as far as the file can be read. They lie in the file and are no
/// more than `PieceBytes`.
const TagFile::Piece& TagFile::PieceWith(long offset, long size)
{
    for (const Piece& piece : m_pieces)
        if (piece.start <= offset && offset + size <= piece.start + piece.size)
            return piece;
    Piece& piece = m_pieces.at(m_older);
    m_older = 1 - m_older;
    piece.start = std::clamp(offset, 0L, std::max(m_length - PieceBytes, 0L));
    piece.size = ReadAt(piece.start, piece.bytes.data(), std::min(PieceBytes, m_length));
    return piece;
}

} // namespace velmo::tags
