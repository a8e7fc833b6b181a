#include "PathArgument.h"

#include <cstdint>
#include <string_view>

namespace velmo::engine {

namespace {

void AppendUtf8(std::string& text, char32_t c)
{
    const auto append = [&text](char32_t byte) { text += static_cast<char>(byte); };
    if (c < 0x80) {
        append(c);
    } else if (c < 0x800) {
        append(0xC0 | (c >> 6U));
        append(0x80 | (c & 0x3FU));
    } else if (c < 0x10000) {
        append(0xE0 | (c >> 12U));
        append(0x80 | ((c >> 6U) & 0x3FU));
        append(0x80 | (c & 0x3FU));
    } else {
        append(0xF0 | (c >> 18U));
        append(0x80 | ((c >> 12U) & 0x3FU));
        append(0x80 | ((c >> 6U) & 0x3FU));
        append(0x80 | (c & 0x3FU));
    }
}

bool IsHigh(char16_t unit)
{
    return unit >= 0xD800 && unit < 0xDC00;
}

bool IsLow(char16_t unit)
{
    return unit >= 0xDC00 && unit < 0xE000;
}

std::string FromUtf16(std::u16string_view units)
{
    std::string text;
    for (std::size_t i = 0; i < units.size(); ++i) {
        const char16_t unit = units[i];
        if (IsHigh(unit) && i + 1 < units.size() && IsLow(units[i + 1])) {
            AppendUtf8(text, 0x10000U + ((unit - 0xD800U) << 10U) + (units[i + 1] - 0xDC00U));
            ++i;
        } else if (unit >= 0xDC80 && unit <= 0xDCFF) {
            text += static_cast<char>(unit - 0xDC00);
        } else {
            AppendUtf8(text, unit);
        }
    }
    return text;
}

} // namespace

std::optional<std::string> PathArgument(const void* file, DWORD flags)
{
    if (file == nullptr)
        return std::nullopt;
    if ((flags & BASS_UNICODE) == 0)
        return static_cast<const char*>(file);
    return FromUtf16(static_cast<const char16_t*>(file));
}

} // namespace velmo::engine
