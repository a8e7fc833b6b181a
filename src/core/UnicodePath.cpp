#include "UnicodePath.h"

#include "Utf8.h"

namespace velmo {

namespace {

bool IsHigh(char32_t unit)
{
    return unit >= 0xD800 && unit < 0xDC00;
}

bool IsLow(char32_t unit)
{
    return unit >= 0xDC00 && unit < 0xE000;
}

} // namespace

std::u16string ToUtf16(std::string_view bytes)
{
    std::u16string text;
    text.reserve(bytes.size());
    for (std::size_t at = 0; at < bytes.size();) {
        const Character character = CharacterAt(bytes, at);
        if (character.stray) {
            text += static_cast<char16_t>(0xDC00 + character.code);
        } else if (character.code < 0x10000) {
            text += static_cast<char16_t>(character.code);
        } else {
            const char32_t beyond = character.code - 0x10000;
            text += static_cast<char16_t>(0xD800 + (beyond >> 10U));
            text += static_cast<char16_t>(0xDC00 + (beyond & 0x3FFU));
        }
        at += character.length;
    }
    return text;
}

std::string FromUtf16(std::u16string_view text)
{
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char32_t unit = text[at];
        if (IsHigh(unit) && at + 1 < text.size() && IsLow(text[at + 1])) {
            ++at;
            AppendUtf8(bytes, 0x10000 + ((unit - 0xD800) << 10U) + (text[at] - 0xDC00U));
        } else if (unit >= 0xDC80 && unit <= 0xDCFF) {
            bytes += static_cast<char>(unit - 0xDC00);
        } else {
            AppendUtf8(bytes, IsHigh(unit) || IsLow(unit) ? 0xFFFD : unit);
        }
    }
    return bytes;
}

} // namespace velmo
