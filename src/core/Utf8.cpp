#include "Utf8.h"

#include <cstdint>
#include <cstring>

namespace velmo {

namespace {

constexpr unsigned char Byte(char c)
{
    return static_cast<unsigned char>(c);
}

/// Length of the sequence that `lead` begins and the smallest code point that needs it; length 0
/// for no lead byte.
struct SequenceKind
{
    std::size_t length;
    char32_t bits;
    char32_t smallest;
};

SequenceKind KindOf(unsigned char lead)
{
    if (lead >= 0xC0 && lead < 0xE0)
        return {2, lead & 0x1FU, 0x80};
    if (lead >= 0xE0 && lead < 0xF0)
        return {3, lead & 0x0FU, 0x800};
    if (lead >= 0xF0 && lead < 0xF8)
        return {4, lead & 0x07U, 0x10000};
    return {0, 0, 0};
}

bool IsCodePoint(char32_t code)
{
    return code < 0xD800 || (code >= 0xE000 && code <= 0x10FFFF);
}

} // namespace

Character CharacterAt(std::string_view text, std::size_t position)
{
    const unsigned char lead = Byte(text[position]);
    if (lead < 0x80)
        return {lead, 1, false};
    const Character stray{lead, 1, true};
    const SequenceKind kind = KindOf(lead);
    if (kind.length == 0 || position + kind.length > text.size())
        return stray;
    char32_t code = kind.bits;
    for (std::size_t i = 1; i < kind.length; ++i) {
        const unsigned char next = Byte(text[position + i]);
        if ((next & 0xC0U) != 0x80)
            return stray;
        code = (code << 6U) | (next & 0x3FU);
    }
    if (code < kind.smallest || !IsCodePoint(code))
        return stray;
    return {code, kind.length, false};
}

std::size_t CountAscii(std::string_view text, std::size_t position)
{
    // Most texts are ASCII throughout: eight bytes at a time.
    constexpr std::uint64_t HighBits = 0x8080808080808080;
    std::size_t at = position;
    for (std::uint64_t bytes = 0; at + sizeof bytes <= text.size(); at += sizeof bytes) {
        std::memcpy(&bytes, text.data() + at, sizeof bytes);
        if ((bytes & HighBits) != 0)
            break;
    }
    while (at < text.size() && Byte(text[at]) < 0x80)
        ++at;
    return at - position;
}

void AppendUtf8(std::string& text, char32_t code)
{
    const auto tail = [&](unsigned shift) {
        text += static_cast<char>(0x80U | ((code >> shift) & 0x3FU));
    };
    if (code < 0x80) {
        text += static_cast<char>(code);
    } else if (code < 0x800) {
        text += static_cast<char>(0xC0U | (code >> 6U));
        tail(0);
    } else if (code < 0x10000) {
        text += static_cast<char>(0xE0U | (code >> 12U));
        tail(6);
        tail(0);
    } else {
        text += static_cast<char>(0xF0U | (code >> 18U));
        tail(12);
        tail(6);
        tail(0);
    }
}

bool IsValidUtf8(std::string_view text)
{
    for (std::size_t at = CountAscii(text, 0); at < text.size();) {
        const Character character = CharacterAt(text, at);
        if (character.stray)
            return false;
        at += character.length;
        at += CountAscii(text, at);
    }
    return true;
}

std::size_t CountCharacters(std::string_view text)
{
    std::size_t count = 0;
    for (std::size_t at = 0; at < text.size(); at += CharacterAt(text, at).length)
        ++count;
    return count;
}

std::string FirstCharacters(std::string_view text, std::size_t count)
{
    std::size_t end = 0;
    for (; count > 0 && end < text.size(); --count)
        end += CharacterAt(text, end).length;
    return std::string(text.substr(0, end));
}

std::string LastCharacters(std::string_view text, std::size_t count)
{
    const std::size_t all = CountCharacters(text);
    const std::size_t skipped = all > count ? all - count : 0;
    return std::string(text.substr(FirstCharacters(text, skipped).size()));
}

} // namespace velmo
