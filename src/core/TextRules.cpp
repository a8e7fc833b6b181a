#include "TextRules.h"

#include "LineReader.h"

#include <algorithm>
#include <array>

namespace velmo {

namespace {

constexpr char32_t StraySurrogate = 0xDC00;

/// Windows-1252 from 0x80 to 0x9F; the five free places are the control characters of Latin-1.
constexpr std::array<char32_t, 32> Windows1252{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

std::string_view TrimAny(std::string_view text, const char* characters)
{
    const std::size_t first = text.find_first_not_of(characters);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(characters) - first + 1);
}

/// The stray byte for which the three bytes at `position` stand; 0 if they are no such sequence.
unsigned char EscapedByte(std::string_view text, std::size_t position)
{
    if (position + 3 > text.size() || text[position] != '\xED')
        return 0;
    const auto second = static_cast<unsigned char>(text[position + 1]);
    const auto third = static_cast<unsigned char>(text[position + 2]);
    if ((second != 0xB2 && second != 0xB3) || (third & 0xC0U) != 0x80)
        return 0;
    return static_cast<unsigned char>(((second & 0x03U) << 6U) | (third & 0x3FU));
}

enum class Encoding
{
    Utf8,
    EscapedUtf8, ///< holds sequences that stand for stray bytes
    OneByte,     ///< Windows-1252
};

Encoding EncodingOf(std::string_view bytes)
{
    Encoding encoding = Encoding::Utf8;
    for (std::size_t at = CountAscii(bytes, 0); at < bytes.size();) {
        const Character character = CharacterAt(bytes, at);
        if (character.stray && EscapedByte(bytes, at) == 0)
            return Encoding::OneByte;
        if (character.stray)
            encoding = Encoding::EscapedUtf8;
        at += character.stray ? 3 : character.length;
        at += CountAscii(bytes, at);
    }
    return encoding;
}

std::string FromWindows1252(std::string_view bytes)
{
    std::string text;
    text.reserve(bytes.size());
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        AppendUtf8(text, byte >= 0x80 && byte < 0xA0 ? Windows1252[byte - 0x80U] : byte);
    }
    return text;
}

char ToWindows1252(char32_t code)
{
    const auto* const found = std::find(Windows1252.begin(), Windows1252.end(), code);
    if (found != Windows1252.end())
        return static_cast<char>(0x80 + (found - Windows1252.begin()));
    return code < 0x80 || (code >= 0xA0 && code <= 0xFF) ? static_cast<char>(code) : '?';
}

} // namespace

std::string_view TrimBlanks(std::string_view text)
{
    return TrimAny(text, " ");
}

std::string_view TrimBlanksAndTabs(std::string_view text)
{
    return TrimAny(text, " \t");
}

std::vector<std::string_view> SplitLines(std::string_view text)
{
    std::vector<std::string_view> lines;
    for (LineReader reader(text); !reader.AtEnd();)
        lines.push_back(reader.Next());
    return lines;
}

std::vector<std::string_view> Split(std::string_view text, char separator)
{
    std::vector<std::string_view> parts;
    if (text.empty())
        return parts;
    for (std::size_t end = text.find(separator); end != std::string_view::npos;
         end = text.find(separator)) {
        parts.push_back(text.substr(0, end));
        text.remove_prefix(end + 1);
    }
    parts.push_back(text);
    return parts;
}

std::string_view SkipByteOrderMark(std::string_view bytes)
{
    constexpr std::string_view Mark = "\xEF\xBB\xBF";
    return bytes.starts_with(Mark) ? bytes.substr(Mark.size()) : bytes;
}

bool IsWindows1252(std::string_view bytes)
{
    return EncodingOf(bytes) == Encoding::OneByte;
}

std::string DecodeFileText(std::string_view bytes)
{
    bytes = SkipByteOrderMark(bytes);
    switch (EncodingOf(bytes)) {
    case Encoding::Utf8: return std::string(bytes);
    case Encoding::OneByte: return FromWindows1252(bytes);
    case Encoding::EscapedUtf8: break;
    }
    std::string text;
    text.reserve(bytes.size());
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t ascii = CountAscii(bytes, at);
        text += bytes.substr(at, ascii);
        at += ascii;
        if (at == bytes.size())
            break;
        const unsigned char escaped = EscapedByte(bytes, at);
        const std::size_t length = escaped != 0 ? 3 : CharacterAt(bytes, at).length;
        if (escaped != 0)
            text += static_cast<char>(escaped);
        else
            text += bytes.substr(at, length);
        at += length;
    }
    return text;
}

std::string EncodeFileText(std::string_view text)
{
    if (IsValidUtf8(text))
        return std::string(text);
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const Character character = CharacterAt(text, at);
        if (character.stray)
            AppendUtf8(bytes, StraySurrogate + character.code);
        else
            bytes += text.substr(at, character.length);
        at += character.length;
    }
    return bytes;
}

std::string EncodeWindows1252(std::string_view text)
{
    std::string bytes;
    for (std::size_t at = 0; at < text.size();) {
        const Character character = CharacterAt(text, at);
        bytes += character.stray ? text[at] : ToWindows1252(character.code);
        at += character.length;
    }
    return bytes;
}

} // namespace velmo
