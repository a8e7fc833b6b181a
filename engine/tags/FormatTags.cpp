#include "AiffText.h"
#include "TagFields.h"
#include "TagText.h"

#include <taglib/aifffile.h>
#include <taglib/apefile.h>
#include <taglib/apetag.h>
#include <taglib/asffile.h>
#include <taglib/flacfile.h>
#include <taglib/id3v2framefactory.h>
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
#include <memory>
#include <mutex>

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
std::string ReadHead(TagFile& file)
{
    constexpr unsigned HeadBytes = 64;
    file.seek(0, TagFile::Beginning);
    const TagLib::ByteVector head = file.readBlock(HeadBytes);
    return {head.data(), head.size()};
}

TagFields ReadMpeg(TagFile& stream)
{
    TagFields fields;
    TagLib::MPEG::File file(&stream, TagLib::ID3v2::FrameFactory::instance(), false);
    if (file.hasID3v2Tag())
        TakeMissing(fields, *file.ID3v2Tag());
    if (file.hasAPETag())
        TakeMissing(fields, *file.APETag());
    return fields;
}

TagFields ReadWave(TagFile& stream)
{
    std::call_once(infoTextSet, &SetInfoText);
    TagFields fields;
    TagLib::RIFF::WAV::File file(&stream, false);
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

TagFields ReadAiff(TagFile& stream)
{
    TagFields fields;
    TagLib::RIFF::AIFF::File file(&stream, false);
    if (file.hasID3v2Tag())
        TakeMissing(fields, *file.tag());
    TakeMissingFrom(ReadAiffTexts(stream.name()), fields);
    return fields;
}

TagFields ReadFlac(TagFile& stream)
{
    TagFields fields;
    TagLib::FLAC::File file(&stream, TagLib::ID3v2::FrameFactory::instance(), false);
    if (file.hasXiphComment())
        TakeMissing(fields, *file.xiphComment());
    if (file.hasID3v2Tag())
        TakeMissing(fields, *file.ID3v2Tag());
    return fields;
}

/// Tags behind and before the sound, whatever that is: the two kinds of files that the tag library
/// reads so are not looked at any further.
TagFields ReadOuterTags(TagFile& stream)
{
    TagFields fields;
    TagLib::APE::File behind(&stream, false);
    if (behind.hasAPETag())
        TakeMissing(fields, *behind.APETag());
    TagLib::TrueAudio::File before(&stream, false);
    if (before.hasID3v2Tag())
        TakeMissing(fields, *before.ID3v2Tag());
    return fields;
}

/// The comments of a file whose kind has one place for them.
template<class File>
TagFields ReadOneTag(TagFile& stream)
{
    TagFields fields;
    const File file(&stream, false);
    if (file.isValid() && file.tag() != nullptr)
        TakeMissing(fields, *file.tag());
    return fields;
}

TagFields ReadOgg(TagFile& stream, const std::string& head)
{
    if (head.find("OpusHead") != std::string::npos)
        return ReadOneTag<TagLib::Ogg::Opus::File>(stream);
    if (head.find("FLAC") != std::string::npos)
        return ReadOneTag<TagLib::Ogg::FLAC::File>(stream);
    return ReadOneTag<TagLib::Ogg::Vorbis::File>(stream);
}

} // namespace

TagFields ReadFormatTags(TagFile& stream, DWORD ctype)
{
    if (!stream.isOpen())
        return {};
    switch (ctype) {
    case BASS_CTYPE_STREAM_FLAC: return ReadFlac(stream);
    case BASS_CTYPE_STREAM_FLAC_OGG: return ReadOneTag<TagLib::Ogg::FLAC::File>(stream);
    case BASS_CTYPE_STREAM_OPUS: return ReadOneTag<TagLib::Ogg::Opus::File>(stream);
    case BASS_CTYPE_STREAM_WAV: return ReadWave(stream);
    case BASS_CTYPE_STREAM_AIFF: return ReadAiff(stream);
    case BASS_CTYPE_STREAM_MP1:
    case BASS_CTYPE_STREAM_MP2:
    case BASS_CTYPE_STREAM_MP3: return ReadMpeg(stream);
    case BASS_CTYPE_STREAM_MP4:
    case BASS_CTYPE_STREAM_ALAC: return ReadOneTag<TagLib::MP4::File>(stream);
    case BASS_CTYPE_STREAM_WMA: return ReadOneTag<TagLib::ASF::File>(stream);
    case BASS_CTYPE_STREAM_WV:
    case BASS_CTYPE_STREAM_APE:
    case BASS_CTYPE_STREAM_MPC:
    case BASS_CTYPE_STREAM_TTA:
    case BASS_CTYPE_STREAM_AAC:
    case BASS_CTYPE_STREAM_AC3: return ReadOuterTags(stream);
    default: break;
    }
    const std::string head = ReadHead(stream);
    return head.starts_with("OggS") ? ReadOgg(stream, head) : ReadMpeg(stream);
}

} // namespace velmo::tags
