#include "ListFormats.h"

#include "ListEntries.h"

#include "core/LineReader.h"
#include "core/NumberText.h"
#include "core/ProfileText.h"
#include "core/TextRules.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace velmo {

namespace {

constexpr std::string_view M3uHeader = "#EXTM3U";
constexpr std::string_view PlsHeader = "[playlist]";

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

/// Whether a text can go into a list file as it is: nothing but ASCII, and no control character
/// below 0x10, line ends among them. A million titles are looked at before each save, so it takes
/// eight bytes at a time: no byte of such a text has its high bit set, nor does it lend one when
/// 0x10 is taken from it.
bool IsPlain(std::string_view text)
{
    constexpr std::uint64_t HighBits = 0x8080808080808080;
    constexpr std::uint64_t Lowest = 0x1010101010101010;
    std::uint64_t seen = 0;
    std::uint64_t bytes = 0;
    for (; text.size() >= sizeof bytes; text.remove_prefix(sizeof bytes)) {
        std::memcpy(&bytes, text.data(), sizeof bytes);
        seen |= bytes | (bytes - Lowest);
    }
    bytes = Lowest;
    if (!text.empty())
        std::memcpy(&bytes, text.data(), text.size());
    seen |= bytes | (bytes - Lowest);
    return (seen & HighBits) == 0;
}

/// Appends one text of a list file.
void AppendOneLine(std::string& file, std::string_view text)
{
    if (IsPlain(text)) {
        file += text;
        return;
    }
    const std::size_t start = file.size();
    file += EncodeFileText(text);
    std::replace_if(
        file.begin() + static_cast<std::ptrdiff_t>(start),
        file.end(),
        [](char c) { return c == '\r' || c == '\n'; },
        ' ');
}

/// Appends the lines of row `number`.
void AppendEntry(std::string& file,
                 ListFormat format,
                 const controls::RowTexts& row,
                 std::size_t number)
{
    const std::string_view title = StripEntryNumber(row.Text);
    const std::string seconds = std::to_string(ParseLengthText(row.Length));
    const std::string key =
        format == ListFormat::Pls ? std::to_string(number) + "=" : std::string();
    switch (format) {
    case ListFormat::Own:
        AppendOneLine(file, title);
        file.append("\r\n").append(seconds).append("#");
        AppendOneLine(file, row.Path);
        break;
    case ListFormat::M3u:
        file.append("#EXTINF:").append(seconds).append(",");
        AppendOneLine(file, title);
        file += "\r\n";
        AppendOneLine(file, row.Path);
        break;
    case ListFormat::Pls:
        file.append("File").append(key);
        AppendOneLine(file, row.Path);
        file.append("\r\nTitle").append(key);
        AppendOneLine(file, title);
        file.append("\r\nLength").append(key).append(seconds);
        break;
    }
    file += "\r\n";
}

std::size_t EstimatedSize(const controls::ListRows& rows)
{
    constexpr std::size_t LongestFrame = 64; // keys, numbers and line ends of an entry
    std::size_t size = LongestFrame;
    for (std::size_t row = 1; row <= rows.Count(); ++row)
        size += rows.Texts(row).Text.size() + rows.Texts(row).Path.size() + LongestFrame;
    return size;
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

std::string WriteList(ListFormat format, const controls::ListRows& rows, std::string_view titleLine)
{
    std::string file;
    file.reserve(EstimatedSize(rows));
    const std::array<std::string_view, 3> headers{titleLine, M3uHeader, PlsHeader};
    AppendOneLine(file, headers.at(static_cast<std::size_t>(format)));
    file += "\r\n";
    for (std::size_t row = 1; row <= rows.Count(); ++row)
        AppendEntry(file, format, rows.Texts(row), row);
    if (format == ListFormat::Pls)
        file += "NumberOfEntries=" + std::to_string(rows.Count()) + "\r\nVersion=2\r\n";
    return file;
}

std::string FirstLineOf(std::string_view bytes)
{
    const std::string text = DecodeFileText(bytes);
    return std::string(LineReader(text).Next());
}

} // namespace velmo
