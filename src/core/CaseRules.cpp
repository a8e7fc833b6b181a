#include "CaseRules.h"

#include "CaseTables.h"
#include "Utf8.h"

#include <algorithm>
#include <compare>
#include <span>

namespace velmo {

namespace {

char32_t Mapped(std::span<const CaseRange> ranges, char32_t code)
{
    const auto after =
        std::upper_bound(ranges.begin(), ranges.end(), code, [](char32_t c, const CaseRange& r) {
            return c < r.first;
        });
    if (after == ranges.begin())
        return code;
    const CaseRange& range = *(after - 1);
    if (code > range.last || (code - range.first) % range.step != 0)
        return code;
    return static_cast<char32_t>(static_cast<std::int32_t>(code) + range.distance);
}

char32_t Folded(char32_t code)
{
    if (code < 0x80)
        return static_cast<unsigned char>(AsciiLower(static_cast<char>(code)));
    return Mapped(FoldRanges, code);
}

char32_t Uppered(char32_t code)
{
    if (code < 0x80)
        return code >= 'a' && code <= 'z' ? code - 'a' + 'A' : code;
    return Mapped(UpperRanges, code);
}

std::string MapAll(std::string_view text, char32_t (*map)(char32_t))
{
    std::string mapped;
    mapped.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const Character character = CharacterAt(text, at);
        if (character.stray)
            mapped += text[at];
        else
            AppendUtf8(mapped, map(character.code));
        at += character.length;
    }
    return mapped;
}

/// A folded character as one number: stray bytes lie beyond all code points, so that they equal
/// only each other.
struct FoldedCharacter
{
    char32_t value;
    std::size_t length;
};

FoldedCharacter FoldedAt(std::string_view text, std::size_t position)
{
    constexpr char32_t BeyondCodePoints = 0x110000;
    const Character character = CharacterAt(text, position);
    const char32_t value =
        character.stray ? BeyondCodePoints + character.code : Folded(character.code);
    return {value, character.length};
}

std::strong_ordering CompareFolded(std::string_view first, std::string_view second)
{
    std::size_t a = 0;
    std::size_t b = 0;
    while (a < first.size() && b < second.size()) {
        const FoldedCharacter left = FoldedAt(first, a);
        const FoldedCharacter right = FoldedAt(second, b);
        if (left.value != right.value)
            return left.value <=> right.value;
        a += left.length;
        b += right.length;
    }
    return (a < first.size()) <=> (b < second.size());
}

} // namespace

bool EqualsIgnoringAsciiCase(std::string_view first, std::string_view second)
{
    return std::equal(first.begin(), first.end(), second.begin(), second.end(), [](char a, char b) {
        return AsciiLower(a) == AsciiLower(b);
    });
}

std::string FoldCase(std::string_view text)
{
    return MapAll(text, Folded);
}

std::string UpperCase(std::string_view text)
{
    return MapAll(text, Uppered);
}

bool EqualsIgnoringCase(std::string_view first, std::string_view second)
{
    return CompareFolded(first, second) == std::strong_ordering::equal;
}

bool LessIgnoringCase(std::string_view first, std::string_view second)
{
    const std::strong_ordering order = CompareFolded(first, second);
    return order == std::strong_ordering::equal ? first < second
                                                : order == std::strong_ordering::less;
}

bool IsTrue(std::string_view value)
{
    return EqualsIgnoringCase(value, "true");
}

bool IsFalse(std::string_view value)
{
    return EqualsIgnoringCase(value, "false");
}

bool MatchesPattern(std::string_view name, std::string_view pattern)
{
    // On a mismatch only the latest star takes one character more: earlier ones can't help.
    std::size_t inName = 0;
    std::size_t inPattern = 0;
    std::size_t starPattern = std::string_view::npos;
    std::size_t starName = 0;
    while (inName < name.size()) {
        const FoldedCharacter have = FoldedAt(name, inName);
        if (inPattern < pattern.size() && pattern[inPattern] == '*') {
            starPattern = ++inPattern;
            starName = inName;
            continue;
        }
        if (inPattern < pattern.size()) {
            const FoldedCharacter want = FoldedAt(pattern, inPattern);
            if (want.value == U'?' || want.value == have.value) {
                inPattern += want.length;
                inName += have.length;
                continue;
            }
        }
        if (starPattern == std::string_view::npos)
            return false;
        starName += CharacterAt(name, starName).length;
        inName = starName;
        inPattern = starPattern;
    }
    return pattern.find_first_not_of('*', inPattern) == std::string_view::npos;
}

} // namespace velmo
