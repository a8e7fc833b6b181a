#include "ListFormats.h"

#include "ListEntries.h"

#include "core/LineReader.h"
#include "core/NumberText.h"
#include "core/ProfileText.h"
#include "core/TextRules.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace velmo {

namespace {

constexpr std::array<std::string_view, 3> Extensions{".zvl", ".m3u", ".pls"};

/// Takes the piece before the next `separator` from the text's beginning.
std::string_view TakePiece(std::string_view& text, char separator)
{
    const std::size_t end = std::min(text.find(separator), text.size());
    const std::string_view piece = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return piece;
}

ListOutcome ReadOwn(LineReader lines, ListEntries& entries)
{
    if (!lines.Next().starts_with(OwnListMagic))
        return ListOutcome::ForeignHeader;
    while (!lines.AtEnd()) {
        const std::string_view title = lines.Next();
        if (lines.AtEnd()) {
            entries.AddTitle(title);
            return ListOutcome::CutShort;
        }
        std::string_view rest = lines.Next();
        const std::string_view seconds = TakePiece(rest, '#');
        // Kept: a path that holds "#" loses what follows it.
        entries.Add(title, seconds, TakePiece(rest, '#'));
    }
    return ListOutcome::Complete;
}

/// Kept: lines are taken in pairs without a look at what they hold.
ListOutcome ReadM3u(LineReader lines, ListEntries& entries)
{
    if (!EqualsIgnoringAsciiCase(lines.Next(), M3uHeader))
        return ListOutcome::ForeignHeader;
    while (!lines.AtEnd()) {
        std::string_view rest = lines.Next();
        if (lines.AtEnd())
            return ListOutcome::CutShort;
        std::string_view information = TakePiece(rest, ',');
        const std::string_view title = TakePiece(rest, ',');
        const std::string_view line = lines.Next();
        if (title.empty() || line.empty())
            continue;
        TakePiece(information, ':');
        const std::string_view seconds = TakePiece(information, ':');
        if (line.front() == '\\')
            entries.Add(title, seconds, "c:" + std::string(line));
        else
            entries.Add(title, seconds, line);
    }
    return ListOutcome::Complete;
}

/// Entries that the file may tell of. A number without entries behind it must not fill the memory.
std::size_t MostPlsEntries(std::string_view bytes)
{
    constexpr std::size_t Fewest = 100'000;
    return std::max(Fewest, bytes.size());
}

ListOutcome ReadPls(std::string_view bytes, ListEntries& entries)
{
    if (!EqualsIgnoringAsciiCase(LineReader(SkipByteOrderMark(bytes)).Next(), PlsHeader))
        return ListOutcome::ForeignHeader;
    const ProfileText profile(bytes);
    const auto value = [&](const std::string& key, std::string_view fallback) {
        const std::string_view found = profile.Value("playlist", key);
        return found.empty() ? fallback : found;
    };
    const double told = std::max(ParseNumber(value("NumberOfEntries", "0")), 0.0);
    const double held = std::min(told, static_cast<double>(MostPlsEntries(bytes)));
    const auto count = static_cast<std::size_t>(RoundHalfEven(held));
    for (std::size_t i = 1; i <= count; ++i) {
        const std::string number = std::to_string(i);
        entries.Add(value("Title" + number, "0"),
                    value("Length" + number, "0"),
                    value("File" + number, ""));
    }
    return ListOutcome::Complete;
}

} // namespace

std::optional<ListFormat> FormatOfExtension(std::string_view end)
{
    for (const ListFormat format : {ListFormat::Own, ListFormat::M3u, ListFormat::Pls})
        if (EqualsIgnoringAsciiCase(end, ExtensionOf(format).substr(1)))
            return format;
    return std::nullopt;
}

std::string_view ExtensionOf(ListFormat format)
{
    return Extensions.at(static_cast<std::size_t>(format));
}

ListOutcome ReadList(ListFormat format,
                     std::string_view bytes,
                     const EntryStyle& style,
                     controls::ListRows& rows)
{
    ListEntries entries(rows, style);
    if (format == ListFormat::Pls)
        return ReadPls(bytes, entries);
    const std::string text = DecodeFileText(bytes);
    return format == ListFormat::Own ? ReadOwn(LineReader(text), entries)
                                     : ReadM3u(LineReader(text), entries);
}

} // namespace velmo
