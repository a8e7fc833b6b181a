#include "ListText.h"

#include "EntryText.h"

#include "core/TextRules.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstring>

namespace velmo {

namespace {

/// Stays in the processor's cache on its way from the rows to the file.
constexpr std::size_t PieceBytes = std::size_t{256} * 1024;

constexpr std::string_view LineEnd = "\r\n";

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

} // namespace

ListText::ListText(ListFormat format, const controls::ListRows& rows, std::string_view titleLine)
    : m_format(format)
    , m_rows(rows)
{
    const std::array<std::string_view, 3> headers{titleLine, M3uHeader, PlsHeader};
    AppendOneLine(headers.at(static_cast<std::size_t>(format)));
    m_piece += LineEnd;
}

std::string_view ListText::Next()
{
    if (m_row > 0)
        m_piece.clear();
    if (m_isComplete)
        return {};
    while (m_row < m_rows.Count() && m_piece.size() < PieceBytes)
        AppendEntry(++m_row);
    m_isComplete = m_row == m_rows.Count();
    if (m_isComplete && m_format == ListFormat::Pls)
        m_piece.append("NumberOfEntries=")
            .append(std::to_string(m_row))
            .append("\r\nVersion=2\r\n");
    return m_piece;
}

void ListText::AppendEntry(std::size_t number)
{
    const controls::RowTexts row = m_rows.Texts(number);
    const std::string_view title = StripEntryNumber(row.Text);
    const std::int32_t seconds = ParseLengthText(row.Length);
    switch (m_format) {
    case ListFormat::Own:
        AppendOneLine(title);
        m_piece += LineEnd;
        AppendNumber(seconds);
        m_piece += '#';
        AppendOneLine(row.Path);
        break;
    case ListFormat::M3u:
        m_piece += "#EXTINF:";
        AppendNumber(seconds);
        m_piece += ',';
        AppendOneLine(title);
        m_piece += LineEnd;
        AppendOneLine(row.Path);
        break;
    case ListFormat::Pls:
        const std::string key = std::to_string(number) + "=";
        m_piece.append("File").append(key);
        AppendOneLine(row.Path);
        m_piece.append("\r\nTitle").append(key);
        AppendOneLine(title);
        m_piece.append("\r\nLength").append(key);
        AppendNumber(seconds);
        break;
    }
    m_piece += LineEnd;
}

void ListText::AppendNumber(std::int32_t number)
{
    std::array<char, 12> digits; // NOLINT(*-member-init): filled below
    char* const end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    m_piece.append(digits.data(), end);
}

void ListText::AppendOneLine(std::string_view text)
{
    if (IsPlain(text)) {
        m_piece += text;
        return;
    }
    std::string line = EncodeFileText(text);
    std::replace_if(
        line.begin(), line.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
    m_piece += line;
}

std::string WriteList(ListFormat format, const controls::ListRows& rows, std::string_view titleLine)
{
    ListText text(format, rows, titleLine);
    std::string file;
    for (std::string_view piece = text.Next(); !piece.empty(); piece = text.Next())
        file += piece;
    return file;
}

} // namespace velmo
