#include "ListRows.h"

#include <algorithm>
#include <stdexcept>

namespace velmo::controls {

namespace {

RowTexts TextsOf(const PlaylistEntry& entry)
{
    return {.Text = entry.Text, .Length = entry.Length, .Path = entry.Path};
}

} // namespace

ListRows::ListRows(Form& form, std::string name, Bounds bounds, std::size_t visibleRows)
    : Control(form, ControlKind::ListRows, std::move(name), bounds)
    , m_viewport{.rows = visibleRows}
{}

std::size_t ListRows::Count() const
{
    return m_rows.Count();
}

PlaylistEntry ListRows::Row(std::size_t row) const
{
    const RowTexts texts = Texts(row);
    return {std::string(texts.Text), std::string(texts.Length), std::string(texts.Path)};
}

RowTexts ListRows::Texts(std::size_t row) const
{
    return m_rows.At(IndexOf(row));
}

void ListRows::SetRow(std::size_t row, const PlaylistEntry& entry)
{
    const std::size_t index = IndexOf(row);
    if (m_rows.At(index) == TextsOf(entry))
        return;
    m_rows.Set(index, TextsOf(entry));
    PropertyChanged();
}

void ListRows::SetText(std::size_t row, std::string_view text)
{
    const std::size_t index = IndexOf(row);
    if (m_rows.At(index).Text == text)
        return;
    m_rows.SetText(index, text);
    PropertyChanged();
}

void ListRows::Add(const PlaylistEntry& entry)
{
    AddTexts(TextsOf(entry));
}

void ListRows::AddTexts(const RowTexts& texts)
{
    m_rows.Append(texts);
    m_marks.push_back(false);
    if (m_focus == 0)
        m_focus = 1;
    PropertyChanged();
}

void ListRows::Remove(std::size_t row)
{
    const std::size_t index = IndexOf(row);
    SetMark(index, false);
    m_rows.Erase(index);
    m_marks.erase(m_marks.begin() + static_cast<std::ptrdiff_t>(index));
    if (m_focus > row)
        --m_focus;
    RowsWereRemoved();
}

void ListRows::RemoveMarked()
{
    const auto isKept = [](bool marked) { return !marked; };
    if (m_marked == 0)
        return;
    if (m_focus > 0) {
        const auto focus = m_marks.begin() + static_cast<std::ptrdiff_t>(m_focus - 1);
        m_focus = static_cast<std::size_t>(std::count_if(m_marks.begin(), focus, isKept)) + 1;
    }
    m_rows.EraseMarked(m_marks);
    m_marks.resize(m_rows.Count());
    ClearMarks();
    RowsWereRemoved();
}

void ListRows::Clear()
{
    if (Count() == 0)
        return;
    m_rows.Clear();
    m_marks.clear();
    m_marked = 0;
    RowsWereRemoved();
}

void ListRows::SwapContent(std::size_t first, std::size_t second)
{
    const std::size_t firstIndex = IndexOf(first);
    const std::size_t secondIndex = IndexOf(second);
    if (first == second)
        return;
    m_rows.Swap(firstIndex, secondIndex);
    PropertyChanged();
}

void ListRows::Reorder(const std::vector<std::size_t>& order)
{
    std::vector<std::size_t> indexes;
    std::vector<bool> marks;
    indexes.reserve(order.size());
    marks.reserve(order.size());
    std::size_t focus = 0;
    for (const std::size_t row : order) {
        indexes.push_back(IndexOf(row));
        marks.push_back(m_marks[indexes.back()]);
        if (row == m_focus)
            focus = indexes.size();
    }
    m_rows.Reorder(indexes);
    m_marks = std::move(marks);
    m_focus = focus;
    m_anchor = 0;
    PropertyChanged();
}

bool ListRows::IsMarked(std::size_t row) const
{
    return m_marks[IndexOf(row)];
}

void ListRows::Mark(std::size_t row)
{
    const std::size_t index = IndexOf(row);
    if (m_marks[index] && m_focus == row)
        return;
    SetMark(index, true);
    m_focus = row;
    m_anchor = 0;
    PropertyChanged();
}

void ListRows::DeselectAll()
{
    m_anchor = 0;
    if (m_marked == 0)
        return;
    ClearMarks();
    PropertyChanged();
}

void ListRows::MarkAll()
{
    m_anchor = 0;
    if (m_marked == Count())
        return;
    m_marks.assign(Count(), true);
    m_marked = Count();
    PropertyChanged();
}

std::size_t ListRows::MarkedCount() const
{
    return m_marked;
}

void ListRows::Choose(std::size_t row, Marking marking)
{
    const std::size_t index = IndexOf(row);
    const std::size_t anchor = m_anchor > 0 ? m_anchor : std::max<std::size_t>(m_focus, 1);
    m_anchor = marking == Marking::Extend ? anchor : row;
    if (marking == Marking::Only || marking == Marking::Extend)
        ClearMarks();
    if (marking == Marking::Only) {
        SetMark(index, true);
    } else if (marking == Marking::Toggle) {
        SetMark(index, !m_marks[index]);
    } else if (marking == Marking::Extend) {
        const auto [first, last] = std::minmax(anchor, row);
        std::fill(m_marks.begin() + static_cast<std::ptrdiff_t>(first - 1),
                  m_marks.begin() + static_cast<std::ptrdiff_t>(last),
                  true);
        m_marked = last - first + 1;
    }
    m_focus = row;
    m_viewport.EnsureVisible(row);
    PropertyChanged();
}

void ListRows::Move(ListStep step, Marking marking)
{
    if (Count() > 0)
        Choose(Target(step), marking);
}

std::size_t ListRows::SelectedEntry() const
{
    return m_focus;
}

std::size_t ListRows::FirstVisibleEntry() const
{
    return Count() == 0 ? 0 : m_viewport.first;
}

void ListRows::EnsureVisible(std::size_t row)
{
    const std::size_t before = m_viewport.first;
    m_viewport.EnsureVisible(IndexOf(row) + 1);
    if (m_viewport.first != before)
        PropertyChanged();
}

std::size_t ListRows::VisibleRows() const
{
    return m_viewport.rows;
}

std::size_t ListRows::IndexOf(std::size_t row) const
{
    if (row == 0 || row > Count())
        throw std::out_of_range("row " + std::to_string(row) + " of a list of "
                                + std::to_string(Count()));
    return row - 1;
}

std::size_t ListRows::Target(ListStep step) const
{
    const std::size_t page = std::max<std::size_t>(m_viewport.rows, 2) - 1;
    const std::size_t top = m_viewport.first;
    const std::size_t bottom = std::min(top + page, Count());
    const auto back = [&](std::size_t rows) { return m_focus > rows ? m_focus - rows : 1; };
    const auto on = [&](std::size_t rows) { return std::min(m_focus + rows, Count()); };
    switch (step) {
    case ListStep::Up: return back(1);
    case ListStep::Down: return on(1);
    case ListStep::PageUp: return m_focus > top ? top : back(page);
    case ListStep::PageDown: return m_focus < bottom ? bottom : on(page);
    case ListStep::First: break;
    case ListStep::Last: return Count();
    }
    return 1;
}

void ListRows::SetMark(std::size_t index, bool marked)
{
    if (m_marks[index] == marked)
        return;
    m_marks[index] = marked;
    m_marked = marked ? m_marked + 1 : m_marked - 1;
}

void ListRows::ClearMarks()
{
    m_marks.assign(m_marks.size(), false);
    m_marked = 0;
}

/// Holds focus and view in what is left of the list.
void ListRows::RowsWereRemoved()
{
    m_focus = std::min(m_focus, Count());
    m_anchor = 0;
    m_viewport.HoldIn(Count());
    PropertyChanged();
}

} // namespace velmo::controls
