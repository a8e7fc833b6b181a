#pragma once

#include <taglib/tiostream.h>

#include <array>
#include <cstddef>
#include <string>

namespace velmo::tags {

/// A regular file, opened once for all kinds of tags that it may hold, and only for reading.
///
/// The tag library reads a few bytes here and there, most of them at the two ends. Its own stream
/// asks the system several times for each of them; this one keeps the two pieces of the file that
/// were last read.
///
/// Whatever is no regular file, or can't be read, is not open and has the length 0; opening it
/// never waits. One thread at a time.
class TagFile final : public TagLib::IOStream
{
public:
    explicit TagFile(const std::string& path);
    ~TagFile() override;
    TagFile(const TagFile&) = delete;
    TagFile& operator=(const TagFile&) = delete;

    TagLib::FileName name() const override { return m_path.c_str(); }
    bool isOpen() const override { return m_descriptor >= 0; }
    bool readOnly() const override { return true; }
    long tell() const override { return m_position; }
    long length() override { return m_length; }
    /// A place before the beginning leaves the position as it was.
    void seek(long offset, Position from) override;
    /// Fewer bytes only at the end, or where the file can't be read.
    TagLib::ByteVector readBlock(unsigned long length) override;

    // Nothing is ever written.
    void writeBlock(const TagLib::ByteVector&) override {}
    void insert(const TagLib::ByteVector&, unsigned long, unsigned long) override {}
    void removeBlock(unsigned long, unsigned long) override {}
    void truncate(long) override {}

private:
    static constexpr long PieceBytes = 4096;

    struct Piece
    {
        long start = 0;
        long size = 0;
        std::array<char, PieceBytes> bytes = {};
    };

    long ReadAt(long offset, char* out, long size) const;
    const Piece& PieceWith(long offset, long size);

    std::string m_path;
    int m_descriptor = -1;
    long m_length = 0;
    long m_position = 0;
    std::array<Piece, 2> m_pieces;
    std::size_t m_older = 0; ///< of the pieces
};

} // namespace velmo::tags
