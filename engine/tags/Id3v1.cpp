#include "TagFields.h"
#include "TagText.h"

#include <taglib/id3v1genres.h>

#include <cstdint>
#include <cstring>

// The tag is one block of 128 bytes at the end of the file: "TAG", title, artist, album (30 each),
// year (4), comment (30, of which the last two are a zero and the track number where there is one),
// genre number.

namespace velmo::tags {

namespace {

constexpr unsigned BlockSize = 128;

std::string TextAt(const TagLib::ByteVector& block, unsigned offset, std::size_t size)
{
    const char* const start = block.data() + offset;
    std::string text(start, strnlen(start, size));
    while (!text.empty() && text.back() == ' ')
        text.pop_back();
    return DecodedText(text);
}

} // namespace

TagFields ReadId3v1(TagFile& file)
{
    TagFields fields;
    file.seek(-static_cast<long>(BlockSize), TagFile::End);
    const TagLib::ByteVector block = file.readBlock(BlockSize);
    if (block.size() < BlockSize || !block.startsWith("TAG"))
        return fields;
    const bool hasTrack = block[125] == '\0' && block[126] != '\0';
    fields.title = TextAt(block, 3, 30);
    fields.artist = TextAt(block, 33, 30);
    fields.album = TextAt(block, 63, 30);
    fields.year = TextAt(block, 93, 4);
    fields.comment = TextAt(block, 97, hasTrack ? 28 : 30);
    if (hasTrack)
        fields.track = std::to_string(static_cast<unsigned>(static_cast<std::uint8_t>(block[126])));
    fields.genre = TagLib::ID3v1::genre(static_cast<std::uint8_t>(block[127])).to8Bit(true);
    return fields;
}

} // namespace velmo::tags
