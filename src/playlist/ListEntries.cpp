#include "ListEntries.h"

#include "core/NumberText.h"

namespace velmo {

ListEntries::ListEntries(controls::ListRows& rows, const EntryStyle& style)
    : m_rows(rows)
    , m_style(style)
{}

void ListEntries::Add(std::string_view title, std::string_view seconds, std::string_view path)
{
    std::string length;
    if (m_style.lengths)
        length = FormatSeconds(RoundHalfEven(ParseNumber(seconds)));
    m_rows.AddTexts({.Text = NumberedText(title), .Length = length, .Path = path});
}

void ListEntries::AddTitle(std::string_view title)
{
    m_rows.AddTexts({.Text = NumberedText(title), .Length = {}, .Path = {}});
}

std::string_view ListEntries::NumberedText(std::string_view title)
{
    if (!m_style.numbers)
        return title;
    m_text = std::to_string(m_rows.Count() + 1);
    m_text.append(". ").append(title);
    return m_text;
}

} // namespace velmo
