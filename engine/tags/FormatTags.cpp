#include "TagFields.h"

#include <taglib/aifffile.h>
#include <taglib/apetag.h>
#include <taglib/flacfile.h>
#include <taglib/id3v2tag.h>
#include <taglib/infotag.h>
#include <taglib/mpegfile.h>
#include <taglib/oggflacfile.h>
#include <taglib/opusfile.h>
#include <taglib/tpropertymap.h>
#include <taglib/vorbisfile.h>
#include <taglib/wavfile.h>

#include <array>

#include <fcntl.h>
#include <unistd.h>

namespace velmo::tags {

namespace {

/// Takes each field that is still empty from `properties`; where several tags speak, the first one
/// asked wins.
void TakeMissing(TagFields& fields, const TagLib::PropertyMap& properties)
{
    struct Key
    {
        const char* name;
        std::string TagFields::*field;
    };
    constexpr std::array Keys = {
        Key{"ARTIST",      &TagFields::artist   },
        Key{"TITLE",       &TagFields::title    },
        Key{"ALBUM",       &TagFields::album    },
        Key{"COMMENT",     &TagFields::comment  },
        Key{"COMPOSER",    &TagFields::composer },
        Key{"COPYRIGHT",   &TagFields::copyright},
        Key{"GENRE",       &TagFields::genre    },
        Key{"DATE",        &TagFields::year     },
        Key{"TRACKNUMBER", &TagFields::track    },
    };
    for (const Key& key : Keys) {
        std::string& field = fields.*key.field;
        const auto found = properties.find(key.name);
        if (field.empty() && found != properties.end() && !found->second.isEmpty())
            field = found->second.front().to8Bit(true);
    }
}

/// The first bytes of the file, enough to tell its kind.
std::string ReadHead(const std::string& path)
{
    std::string head(64, '\0');
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    const ssize_t size = file < 0 ? 0 : pread(file, head.data(), head.size(), 0);
    if (file >= 0)
        close(file);
    head.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
    return head;
}

TagFields ReadMpeg(const std::string& path)
{
    TagFields fields;
    TagLib::MPEG::File file(path.c_str(), false);
    if (file.hasID3v2Tag())
        TakeMissing(fields, file.ID3v2Tag()->properties());
    if (file.hasAPETag())
        TakeMissing(fields, file.APETag()->properties());
    return fields;
}

TagFields ReadWave(const std::string& path)
{
    TagFields fields;
    TagLib::RIFF::WAV::File file(path.c_str(), false);
    if (file.hasID3v2Tag())
        TakeMissing(fields, file.ID3v2Tag()->properties());
    if (file.hasInfoTag())
        TakeMissing(fields, file.InfoTag()->properties());
    return fields;
}

/// The comments of a file whose kind has one place for them.
template<class File>
TagFields ReadOneTag(const std::string& path)
{
    TagFields fields;
    const File file(path.c_str(), false);
    if (file.isValid() && file.tag() != nullptr)
        TakeMissing(fields, file.tag()->properties());
    return fields;
}

TagFields ReadOgg(const std::string& path, const std::string& head)
{
    if (head.find("OpusHead") != std::string::npos)
        return ReadOneTag<TagLib::Ogg::Opus::File>(path);
    if (head.find("FLAC") != std::string::npos)
        return ReadOneTag<TagLib::Ogg::FLAC::File>(path);
    return ReadOneTag<TagLib::Ogg::Vorbis::File>(path);
}

} // namespace

TagFields ReadFormatTags(const std::string& path, DWORD ctype)
{
    switch (ctype) {
    case BASS_CTYPE_STREAM_FLAC: return ReadOneTag<TagLib::FLAC::File>(path);
    case BASS_CTYPE_STREAM_WAV: return ReadWave(path);
    case BASS_CTYPE_STREAM_AIFF: return ReadOneTag<TagLib::RIFF::AIFF::File>(path);
    case BASS_CTYPE_STREAM_MP1:
    case BASS_CTYPE_STREAM_MP2:
    case BASS_CTYPE_STREAM_MP3: return ReadMpeg(path);
    default: break;
    }
    const std::string head = ReadHead(path);
    return head.starts_with("OggS") ? ReadOgg(path, head) : ReadMpeg(path);
}

} // namespace velmo::tags
