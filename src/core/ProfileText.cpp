#include "ProfileText.h"

#include "core/TextRules.h"

#include <algorithm>

namespace velmo {

namespace {

constexpr std::size_t LongestValue = 254;

enum class LineKind
{
    Blank,
    Section,
    Key,
    Other,
};

/// What a line says. The views point into the line.
struct Line
{
    LineKind kind = LineKind::Other;
    std::string_view name = {};  ///< of the section or key
    std::string_view value = {}; ///< of a key, with its quotes
    std::string_view rest = {};  ///< of a key: everything behind the "="
};

Line Classify(std::string_view text)
{
    const std::string_view line = TrimBlanksAndTabs(text);
    if (line.empty())
        return {.kind = LineKind::Blank};
    if (line.front() == ';')
        return {};
    const std::size_t bracket = line.find(']');
    if (line.front() == '[' && bracket != std::string_view::npos)
        return {.kind = LineKind::Section, .name = TrimBlanksAndTabs(line.substr(1, bracket - 1))};
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos)
        return {};
    const std::string_view rest = text.substr(text.find('=') + 1);
    return {
        LineKind::Key, TrimBlanksAndTabs(line.substr(0, equals)), TrimBlanksAndTabs(rest), rest};
}

std::string_view Unquoted(std::string_view value)
{
    const bool quoted = value.size() >= 2 && value.front() == value.back()
                        && (value.front() == '"' || value.front() == '\'');
    return quoted ? value.substr(1, value.size() - 2) : value;
}

void AppendLower(std::string& text, std::string_view name)
{
    std::transform(name.begin(), name.end(), std::back_inserter(text), AsciiLower);
}

/// One text for section and key; a line end parts them, since neither can hold one.
std::string Address(std::string_view section, std::string_view key)
{
    std::string address;
    address.reserve(section.size() + key.size() + 1);
    AppendLower(address, section);
    address += '\n';
    AppendLower(address, key);
    return address;
}

std::size_t OffsetIn(std::string_view whole, std::string_view part)
{
    return static_cast<std::size_t>(part.data() - whole.data());
}

/// Where a key of a section stands, or where it would be put.
struct Place
{
    bool sectionFound = false;
    std::optional<Line> key; ///< the first of that name
    std::size_t insertAt =
        0; ///< end, without its line end, of the section's last line that is not blank
};

Place FindPlace(std::string_view content, std::string_view section, std::string_view key)
{
    Place place;
    for (const std::string_view text : SplitLines(content)) {
        const Line line = Classify(text);
        if (line.kind == LineKind::Section) {
            if (place.sectionFound)
                break;
            place.sectionFound = EqualsIgnoringAsciiCase(line.name, section);
        }
        if (!place.sectionFound)
            continue;
        if (line.kind == LineKind::Key && EqualsIgnoringAsciiCase(line.name, key)) {
            place.key = line;
            break;
        }
        if (line.kind != LineKind::Blank)
            place.insertAt = OffsetIn(content, text) + text.size();
    }
    return place;
}

bool IsReadBack(std::string_view text, LineKind kind, std::string_view name)
{
    const std::vector<std::string_view> lines = SplitLines(text);
    return lines.size() == 1 && Classify(text).kind == kind && Classify(text).name == name;
}

std::string_view LineEndOf(std::string_view content)
{
    const bool onlyLf = content.find('\n') != std::string_view::npos
                        && content.find('\r') == std::string_view::npos;
    return onlyLf ? "\n" : "\r\n";
}

/// What stands between the content and a new section: the missing line end, and an empty line.
std::string GapBeforeSection(std::string_view content, std::string_view lineEnd)
{
    if (content.empty())
        return {};
    const bool ended = content.back() == '\n' || content.back() == '\r';
    if (!ended)
        return std::string(lineEnd) + std::string(lineEnd);
    const bool lastIsBlank = TrimBlanksAndTabs(SplitLines(content).back()).empty();
    return lastIsBlank ? std::string() : std::string(lineEnd);
}

} // namespace

ProfileText::ProfileText(std::string_view bytes)
{
    const std::string content = DecodeFileText(bytes);
    std::unordered_map<std::string, bool> seen;
    std::string section;
    bool counts = false;
    for (const std::string_view text : SplitLines(content)) {
        const Line line = Classify(text);
        if (line.kind == LineKind::Section) {
            section = line.name;
            counts = seen.emplace(Address(section, {}), true).second;
        } else if (line.kind == LineKind::Key && counts) {
            m_values.emplace(Address(section, line.name),
                             FirstCharacters(Unquoted(line.value), LongestValue));
        }
    }
}

std::string_view ProfileText::Value(std::string_view section, std::string_view key) const
{
    const auto found = m_values.find(Address(TrimBlanksAndTabs(section), TrimBlanksAndTabs(key)));
    return found == m_values.end() ? std::string_view() : std::string_view(found->second);
}

std::optional<std::string> ChangeProfile(std::string_view bytes,
                                         std::string_view section,
                                         std::string_view key,
                                         std::string_view value)
{
    const auto encode =
        IsWindows1252(SkipByteOrderMark(bytes)) ? EncodeWindows1252 : EncodeFileText;
    const std::string sectionName = encode(TrimBlanksAndTabs(section));
    const std::string keyName = encode(TrimBlanksAndTabs(key));
    const std::string newValue = encode(value.substr(0, value.find_first_of("\r\n")));
    const std::string keyLine = keyName + "=" + newValue;
    if (!IsReadBack("[" + sectionName + "]", LineKind::Section, sectionName) || keyName.empty()
        || !IsReadBack(keyLine, LineKind::Key, keyName))
        return std::nullopt;

    std::string content(SkipByteOrderMark(bytes));
    const Place place = FindPlace(content, sectionName, keyName);
    const std::string lineEnd(LineEndOf(content));
    if (place.key) {
        // The blanks around an old value stay; a value that brings its own replaces them, else they
        // would add up.
        const bool keepsBlanks =
            !place.key->value.empty() && TrimBlanksAndTabs(newValue) == newValue;
        const std::string_view replaced = keepsBlanks ? place.key->value : place.key->rest;
        if (replaced == newValue)
            return std::nullopt;
        content.replace(OffsetIn(content, replaced), replaced.size(), newValue);
    } else if (place.sectionFound) {
        const bool isLastLine = place.insertAt == content.size();
        content.insert(place.insertAt, lineEnd + keyLine + (isLastLine ? lineEnd : ""));
    } else {
        content += GapBeforeSection(content, lineEnd);
        content += "[" + sectionName + "]" + lineEnd + keyLine + lineEnd;
    }
    return content;
}

} // namespace velmo
