#include "TagText.h"

#include <taglib/tstring.h>

#include <array>
#include <cstdint>
#include <optional>

namespace velmo::tags {

namespace {

/// Bytes that follow `lead` in UTF-8; nothing if it begins no code point.
std::optional<std::size_t> FollowingBytes(std::uint8_t lead)
{
    if (lead < 0x80)
        return 0;
    if (lead >= 0xC2 && lead < 0xE0)
        return 1;
    if (lead >= 0xE0 && lead < 0xF0)
        return 2;
    if (lead >= 0xF0 && lead <= 0xF4)
        return 3;
    return std::nullopt;
}

bool IsUtf8(const std::string& bytes)
{
    std::size_t i = 0;
    while (i < bytes.size()) {
        const std::optional<std::size_t> more = FollowingBytes(static_cast<std::uint8_t>(bytes[i]));
        if (!more || i + *more >= bytes.size())
            return false;
        for (std::size_t k = 1; k <= *more; ++k)
            if ((static_cast<std::uint8_t>(bytes[i + k]) & 0xC0) != 0x80)
                return false;
        i += *more + 1;
    }
    return true;
}

/// Code points of the bytes 0x80 to 0x9F of Windows-1252; the five that it leaves open stay what
/// they are.
constexpr std::array<wchar_t, 32> Windows1252 = {
    0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x8D,   0x017D, 0x8F,   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178,
};

std::string FromWindows1252(const std::string& bytes)
{
    TagLib::wstring wide;
    for (const char c : bytes) {
        const auto byte = static_cast<std::uint8_t>(c);
        wide +=
            byte >= 0x80 && byte < 0xA0 ? Windows1252.at(byte - 0x80U) : static_cast<wchar_t>(byte);
    }
    return TagLib::String(wide).to8Bit(true);
}

} // namespace

std::string DecodedText(const std::string& bytes)
{
    return IsUtf8(bytes) ? bytes : FromWindows1252(bytes);
}

} // namespace velmo::tags
