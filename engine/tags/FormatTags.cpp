#include "AiffText.h"
#include "TagFields.h"
#include "TagText.h"

#include <taglib/aifffile.h>
#include <taglib/apefile.h>
#include <taglib/apetag.h>
#include <taglib/asffile.h>
#include <taglib/flacfile.h>
#include <taglib/id3v2tag.h>
#include <taglib/infotag.h>
#include <taglib/mp4file.h>
#include <taglib/mpegfile.h>
#include <taglib/oggflacfile.h>
#include <taglib/opusfile.h>
#include <taglib/tpropertymap.h>
#include <taglib/trueaudiofile.h>
#include <taglib/vorbisfile.h>
#include <taglib/wavfile.h>
#include <taglib/xiphcomment.h>

#include <array>
#include <cstring>
#include <filesystem>
#include <memory>
#include <mutex>

#include <fcntl.h>
#include <system_error>
#include <unistd.h>

namespace velmo::tags {

namespace {

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

/// Takes each field that is still empty from `tag`; where several tags speak, the first one asked
/// wins. Every kind of tag has its own list of properties.
template<class Tag>
void TakeMissing(TagFields& fields, const Tag& tag)
{
    const TagLib::PropertyMap properties = tag.properties();
    for (const Key& key : Keys) {
        std::string& field = fields.*key.field;
        const auto found = properties.find(key.name);
        if (field.empty() && found != properties.end() && !found->second.isEmpty())
            field = found->second.front().to8Bit(true);
    }
    // Some kinds have a second name for it.
    if (fields.comment.empty())
        fields.comment = tag.comment().to8Bit(true);
}

/// The same from the fields of another tag.
void TakeMissingFrom(const TagFields& others, TagFields& fields)
{
    for (const Key& key : Keys)
        if ((fields.*key.field).empty())
            fields.*key.field = others.*key.field;
}

// The tag library's class has no virtual destructor; none of these is destroyed.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

/// Reads texts of a WAV file's list, which doesn't say how they are written.
// NOLINTNEXTLINE(cppcoreguidelines-virtual-class-destructor): see above
class InfoText final : public TagLib::RIFF::Info::StringHandler
{
public:
    TagLib::String parse(const TagLib::ByteVector& data) const override
    {
        const std::string bytes(data.data(), strnlen(data.data(), data.size()));
        return {DecodedText(bytes), TagLib::String::UTF8};
    }
};

#pragma GCC diagnostic pop

// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): once in a process
constinit std::once_flag infoTextSet;

/// The tag library keeps it for the process's life.
void SetInfoText()
{
    TagLib::RIFF::Info::Tag::setStringHandler(std::make_unique<InfoText>().release());
} // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks): kept, as told

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
        TakeMissing(fields, *file.ID3v2Tag());
    if (file.hasAPETag())
        TakeMissing(fields, *file.APETag());
    return fields;
}

TagFields ReadWave(const std::string& path)
{
    std::call_once(infoTextSet, &SetInfoText);
    TagFields fields;
    TagLib::RIFF::WAV::File file(path.c_str(), false);
    if (file.hasID3v2Tag())
        TakeMissing(fields, *file.ID3v2Tag());
    if (!file.hasInfoTag())
        return fields;
    const TagLib::RIFF::Info::Tag& info = *file.InfoTag();
    TakeMissing(fields, info);
    TagFields others;
    others.composer = info.fieldText("IMUS").to8Bit(true);
    others.copyright = info.fieldText("ICOP").to8Bit(true);
    TakeMissingFrom(others, fields);
    return fields;
}

TagFields ReadAiff(const std::string& path)
{
    TagFields fields;
    TagLib::RIFF::AIFF::File file(path.c_str(), false);
    if (file.hasID3v2Tag())
        TakeMissing(fields, *file.tag());
    TakeMissingFrom(ReadAiffTexts(path), fields);
    return fields;
}

TagFields ReadFlac(const std::string& path)
{
    TagFields fields;
    TagLib::FLAC::File file(path.c_str(), false);
    if (file.hasXiphComment())
        TakeMissing(fields, *file.xiphComment());
    if (file.hasID3v2Tag())
        TakeMissing(fields, *file.ID3v2Tag());
    return fields;
}

/// Tags behind and before the sound, whatever that is: the two kinds of files that the tag library
/// reads so are not looked at any further.
TagFields ReadOuterTags(const std::string& path)
{
    TagFields fields;
    TagLib::APE::File behind(path.c_str(), false);
    if (behind.hasAPETag())
        TakeMissing(fields, *behind.APETag());
    TagLib::TrueAudio::File before(path.c_str(), false);
    if (before.hasID3v2Tag())
        TakeMissing(fields, *before.ID3v2Tag());
    return fields;
}

/// The comments of a file whose kind has one place for them.
template<class File>
TagFields ReadOneTag(const std::string& path)
{
    TagFields fields;
    const File file(path.c_str(), false);
    if (file.isValid() && file.tag() != nullptr)
        TakeMissing(fields, *file.tag());
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
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(path, ignored))
        return {}; // the tag library might wait for what is none
    switch (ctype) {
    case BASS_CTYPE_STREAM_FLAC: return ReadFlac(path);
    case BASS_CTYPE_STREAM_FLAC_OGG: return ReadOneTag<TagLib::Ogg::FLAC::File>(path);
    case BASS_CTYPE_STREAM_OPUS: return ReadOneTag<TagLib::Ogg::Opus::File>(path);
    case BASS_CTYPE_STREAM_WAV: return ReadWave(path);
    case BASS_CTYPE_STREAM_AIFF: return ReadAiff(path);
    case BASS_CTYPE_STREAM_MP1:
    case BASS_CTYPE_STREAM_MP2:
    case BASS_CTYPE_STREAM_MP3: return ReadMpeg(path);
    case BASS_CTYPE_STREAM_MP4:
    case BASS_CTYPE_STREAM_ALAC: return ReadOneTag<TagLib::MP4::File>(path);
    case BASS_CTYPE_STREAM_WMA: return ReadOneTag<TagLib::ASF::File>(path);
    case BASS_CTYPE_STREAM_WV:
    case BASS_CTYPE_STREAM_APE:
    case BASS_CTYPE_STREAM_MPC:
    case BASS_CTYPE_STREAM_TTA:
    case BASS_CTYPE_STREAM_AAC:
    case BASS_CTYPE_STREAM_AC3: return ReadOuterTags(path);
    default: break;
    }
    const std::string head = ReadHead(path);
    return head.starts_with("OggS") ? ReadOgg(path, head) : ReadMpeg(path);
}

} // namespace velmo::tags
