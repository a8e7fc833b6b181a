#include "tags.h"

#include "TagFields.h"

#include <optional>
#include <string>

// The engine is reached through its own header alone: the channel's file is named by
// BASS_ChannelGetInfo. A title is made of four calls on the same handle, so what was read of the
// last handle is kept, a thread for itself; handles are never used twice, so what is kept is never
// another file's.

namespace velmo::tags {

namespace {

struct LastRead
{
    DWORD handle = 0;
    std::optional<TagFields> format;
    std::optional<TagFields> id3v1;
    std::string text;
};

/// Empties what is kept unless it is of `handle`. Its `filename` is null if the handle is not open
/// or is a module's.
BASS_CHANNELINFO FileOf(DWORD handle, LastRead& last)
{
    BASS_CHANNELINFO info = {};
    if (BASS_ChannelGetInfo(handle, &info) == 0 || info.filename == nullptr
        || (info.ctype & BASS_CTYPE_MUSIC) != 0)
        return {};
    if (last.handle != handle) {
        last = {};
        last.handle = handle;
    }
    return info;
}

const char* Text(std::string text, LastRead& last)
{
    last.text = std::move(text);
    return last.text.empty() ? nullptr : last.text.c_str();
}

/// Reads both kinds of tags: who asks for the one asks for the other, and opening costs the most.
void ReadTags(const BASS_CHANNELINFO& info, LastRead& last)
{
    TagFile file(info.filename);
    last.id3v1 = ReadId3v1(file);
    last.format = TagFields{};
    try {
        last.format = ReadFormatTags(file, info.ctype);
    } catch (...) {
        // The tag library chokes on the file: no tag of its format.
    }
}

const char* Read(DWORD handle, const char* format, std::optional<TagFields> LastRead::*tag) noexcept
{
    thread_local LastRead last;
    try {
        const BASS_CHANNELINFO info = format == nullptr ? BASS_CHANNELINFO{} : FileOf(handle, last);
        if (info.filename == nullptr)
            return nullptr;
        if (!(last.*tag))
            ReadTags(info, last);
        return Text(Fill(format, *(last.*tag)), last);
    } catch (...) {
        return nullptr; // out of memory
    }
}

} // namespace

} // namespace velmo::tags

extern "C" {

__attribute__((visibility("default"))) const char* TAGS_Read(DWORD handle,
                                                             const char* format) noexcept
{
    return velmo::tags::Read(handle, format, &velmo::tags::LastRead::format);
}

__attribute__((visibility("default"))) const char* TAGS_ID3V1_Read(DWORD handle,
                                                                   const char* format) noexcept
{
    return velmo::tags::Read(handle, format, &velmo::tags::LastRead::id3v1);
}

} // extern "C"
