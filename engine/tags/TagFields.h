#pragma once

#include "TagFile.h"
#include "bass.h"

#include <string>
#include <string_view>

namespace velmo::tags {

/// The fields of one tag, UTF-8, empty where the tag says nothing.
struct TagFields
{
    std::string artist;
    std::string title;
    std::string album;
    std::string comment;
    std::string composer;
    std::string copyright;
    std::string genre;
    std::string year;
    std::string track;
};

/// `format` with each mark (`%ARTI` and the like) replaced by its field; unknown marks stay as they
/// are.
std::string Fill(std::string_view format, const TagFields& fields);

/// The tags of the file's own format. All empty if there are none or the file can't be read. The
/// file's kind is `ctype`, which the engine tells of it (`BASS_CTYPE_`); what it doesn't name is
/// told by the first bytes, never by the file's name.
TagFields ReadFormatTags(TagFile& stream, DWORD ctype);

/// The ID3v1 tag at the file's end; all empty if there is none.
TagFields ReadId3v1(TagFile& file);

} // namespace velmo::tags
