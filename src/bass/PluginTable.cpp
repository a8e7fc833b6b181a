#include "PluginTable.h"

#include "core/Utf8.h"

namespace velmo {

namespace {

void AppendPart(std::string& text, const char* part)
{
    text += '#';
    if (part != nullptr)
        text += part;
}

} // namespace

void FillFormats(const modBass& bass, PluginEntry& record, HPLUGIN handle)
{
    const BASS_PLUGININFO* info = bass.BASS_PluginGetInfo(handle);
    const DWORD count = info == nullptr ? 0 : info->formatc;
    for (DWORD i = 0; i < count; ++i) {
        AppendPart(record.Formats, info->formats[i].name);
        AppendPart(record.Extensions, info->formats[i].exts);
    }
    for (std::string* text : {&record.Formats, &record.Extensions})
        text->erase(0, FirstCharacters(*text, 1).size());
}

} // namespace velmo
