#include "ListRows.h"

#include <algorithm>
#include <stdexcept>

namespace velmo::controls {

namespace {

template<class Rows>
auto Place(Rows& rows, std::size_t index)
{
    return rows.begin() + static_cast<typename Rows::difference_type>(index);
}

} // namespace

ListRows::ListRows(Form& form, std::string name, Bounds bounds)
    : Control(form, ControlKind::ListRows, std::move(name), bounds)
{}

std::size_t ListRows::Count() const
{
    return m_rows.size();
}

const PlaylistEntry& ListRows::Row(std::size_t row) const
{
    return m_rows[IndexOf(row)];
}

void ListRows::SetRow(std::size_t row, PlaylistEntry entry)
{
    PlaylistEntry& old = m_rows[IndexOf(row)];
    if (old == entry)
        return;
    old = std::move(entry);
    PropertyChanged();
}

void ListRows::Add(PlaylistEntry entry)
{
    m_rows.push_back(std::move(entry));
    m_marks.push_back(false);
    if (m_focus == 0)
        m_focus = 1;
    PropertyChanged();
}

void ListRows::Remove(std::size_t row)
{
    const std::size_t index = IndexOf(row);
    m_rows.erase(Place(m_rows, index));
    m_marks.erase(Place(m_marks, index));
    if (m_focus > row)
        --m_focus;
    m_focus = std::min(m_focus, m_rows.size());
    PropertyChanged();
}

void ListRows::Clear()
{
    if (m_rows.empty())
        return;
    m_rows.clear();
    m_marks.clear();
    m_focus = 0;
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
    m_marks[index] = true;
    m_focus = row;
    PropertyChanged();
}

void ListRows::DeselectAll()
{
    if (std::find(m_marks.begin(), m_marks.end(), true) == m_marks.end())
        return;
    m_marks.assign(m_marks.size(), false);
    PropertyChanged();
}

std::size_t ListRows::SelectedEntry() const
{
    return m_focus;
}

std::size_t ListRows::IndexOf(std::size_t row) const
{
    if (row == 0 || row > m_rows.size())
        throw std::out_of_range("row " + std::to_string(row) + " of a list of "
                                + std::to_string(m_rows.size()));
    return row - 1;
}

} // namespace velmo::controls
