#include "AiffText.h"

#include "TagText.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <string_view>

// A file is "FORM", a size, "AIFF" or "AIFC", and chunks: four letters, the size of what follows as
// four bytes, the highest first, and that much, made even.

namespace velmo::tags {

namespace {

constexpr std::uint32_t MostTextBytes = 4096;
constexpr int MostChunks = 1000;

struct TextChunk
{
    std::string_view name;
    std::string TagFields::*field;
};

constexpr std::array TextChunks = {
    TextChunk{"NAME", &TagFields::title    },
    TextChunk{"AUTH", &TagFields::artist   },
    TextChunk{"(c) ", &TagFields::copyright},
    TextChunk{"ANNO", &TagFields::comment  },
};

struct ChunkHeader
{
    std::array<char, 4> name = {};
    std::uint32_t size = 0;
};

bool ReadHeader(std::istream& file, ChunkHeader& header)
{
    std::array<char, 8> bytes = {};
    if (!file.read(bytes.data(), bytes.size()))
        return false;
    std::copy_n(bytes.begin(), header.name.size(), header.name.begin());
    header.size = 0;
    for (std::size_t i = header.name.size(); i < bytes.size(); ++i)
        header.size = header.size << 8U | static_cast<std::uint8_t>(bytes.at(i));
    return true;
}

std::string ReadText(std::istream& file, std::uint32_t size)
{
    std::string text(std::min(size, MostTextBytes), '\0');
    file.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(file.gcount()));
    text.resize(strnlen(text.c_str(), text.size()));
    while (!text.empty() && text.back() == ' ')
        text.pop_back();
    return DecodedText(text);
}

} // namespace

TagFields ReadAiffTexts(const std::string& path)
{
    TagFields fields;
    std::ifstream file(path, std::ios::binary);
    ChunkHeader header;
    if (!ReadHeader(file, header) || std::string_view(header.name.data(), 4) != "FORM")
        return fields;
    std::int64_t at = 12;
    for (int chunk = 0; chunk < MostChunks; ++chunk) {
        if (!file.seekg(at) || !ReadHeader(file, header))
            break;
        const std::string_view name(header.name.data(), header.name.size());
        const auto* const found = std::ranges::find(TextChunks, name, &TextChunk::name);
        if (found != TextChunks.end() && (fields.*(found->field)).empty())
            fields.*(found->field) = ReadText(file, header.size);
        at += 8 + std::int64_t{header.size} + header.size % 2;
    }
    return fields;
}

} // namespace velmo::tags
