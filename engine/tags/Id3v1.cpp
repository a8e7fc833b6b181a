#include "TagFields.h"
#include "TagText.h"

#include <taglib/id3v1genres.h>

#include <array>
#include <cstdint>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

// The tag is one block of 128 bytes at the end of the file: "TAG", title, artist, album (30 each),
// year (4), comment (30, of which the last two are a zero and the track number where there is one),
// genre number.

namespace velmo::tags {

namespace {

constexpr std::size_t BlockSize = 128;
using Block = std::array<char, BlockSize>;

bool ReadLastBlock(const std::string& path, Block& block)
{
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0)
        return false;
    struct stat state = {};
    bool complete = false;
    if (fstat(file, &state) == 0 && S_ISREG(state.st_mode)
        && state.st_size >= static_cast<off_t>(BlockSize)) {
        const off_t start = state.st_size - static_cast<off_t>(BlockSize);
        complete = pread(file, block.data(), BlockSize, start) == static_cast<ssize_t>(BlockSize);
    }
    close(file);
    return complete;
}

std::string TextAt(const Block& block, std::size_t offset, std::size_t size)
{
    std::string text(block.data() + offset, strnlen(block.data() + offset, size));
    while (!text.empty() && text.back() == ' ')
        text.pop_back();
    return DecodedText(text);
}

} // namespace

TagFields ReadId3v1(const std::string& path)
{
    Block block = {};
    TagFields fields;
    if (!ReadLastBlock(path, block) || std::memcmp(block.data(), "TAG", 3) != 0)
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
