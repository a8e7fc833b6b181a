#include "PluginTable.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <span>

namespace velmo::engine {

namespace {

constexpr std::uint32_t MostFormats = 256;
constexpr std::size_t MostTextBytes = 1024;

/// A text that a list of the program may show: no control characters, and an end.
bool IsUsableText(const char* text) noexcept
{
    if (text == nullptr)
        return false;
    const std::size_t bytes = strnlen(text, MostTextBytes);
    return bytes < MostTextBytes && std::none_of(text, text + bytes, [](char c) {
               return static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
           });
}

bool IsUsableDecoder(const BASS_DECODER& decoder) noexcept
{
    return IsUsableText(decoder.name) && IsUsableText(decoder.masks)
           && (decoder.kind == BASS_DECODER_STREAM || decoder.kind == BASS_DECODER_MUSIC)
           && decoder.probe != nullptr && decoder.open != nullptr && decoder.read != nullptr
           && decoder.seek != nullptr && decoder.close != nullptr;
}

bool AreUsableFormats(const BASS_PLUGINFORM* formats, std::uint32_t count) noexcept
{
    if (count == 0)
        return true;
    return formats != nullptr && count <= MostFormats
           && std::ranges::all_of(std::span(formats, count), [](const BASS_PLUGINFORM& format) {
                  return IsUsableText(format.name) && IsUsableText(format.exts);
              });
}

} // namespace

bool IsUsablePlugin(const BASS_PLUGIN* table, std::size_t size) noexcept
{
    // Another version may be a smaller object: nothing behind the two numbers is read before.
    if (table == nullptr || size < offsetof(BASS_PLUGIN, version) || table->abi != BASS_PLUGIN_ABI
        || table->size != sizeof(BASS_PLUGIN) || size < sizeof(BASS_PLUGIN))
        return false;
    return table->decoder != nullptr && IsUsableDecoder(*table->decoder)
           && AreUsableFormats(table->formats, table->formatCount);
}

} // namespace velmo::engine
