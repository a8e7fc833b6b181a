#include "BareTags.h"

#include <mpg123.h>
#include <taglib/id3v1tag.h>
#include <taglib/id3v2tag.h>
#include <taglib/mpegfile.h>

namespace velmo::bench {

namespace {

std::size_t Found(const char* text)
{
    return text != nullptr ? 1 : 0;
}

} // namespace

std::size_t ReadTagsAndLength(const std::string& path)
{
    std::size_t found = 0;
    TagLib::MPEG::File file(path.c_str(), false);
    if (file.hasID3v2Tag())
        found += Found(file.ID3v2Tag()->title().toCString(true));
    if (file.hasID3v1Tag())
        found += Found(file.ID3v1Tag()->title().toCString(true));
    mpg123_handle* handle = mpg123_new(nullptr, nullptr);
    mpg123_param(handle, MPG123_ADD_FLAGS, MPG123_FORCE_FLOAT | MPG123_QUIET | MPG123_GAPLESS, 0);
    mpg123_open(handle, path.c_str());
    long rate = 0;
    int channels = 0;
    int encoding = 0;
    mpg123_getformat(handle, &rate, &channels, &encoding);
    found += mpg123_length(handle) > 0 ? 1 : 0;
    mpg123_delete(handle);
    return found;
}

} // namespace velmo::bench
