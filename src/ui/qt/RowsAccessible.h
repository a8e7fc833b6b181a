#pragma once

#include "ControlAccessible.h"

#include <cstddef>
#include <deque>
#include <unordered_map>

namespace velmo::qt {

class ListRowsWidget;

/// A list with its rows as children, from index 0. A row's interface is made when someone asks for
/// it, and only the last ones asked for are kept: a million rows cost nothing.
class RowsAccessible final : public ControlAccessible
{
public:
    explicit RowsAccessible(ListRowsWidget& list);
    ~RowsAccessible() override;
    RowsAccessible(const RowsAccessible&) = delete;
    RowsAccessible& operator=(const RowsAccessible&) = delete;

    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    QAccessibleInterface* focusChild() const override;
    QAccessible::State state() const override;

private:
    ListRowsWidget& m_list;
    mutable std::unordered_map<std::size_t, QAccessible::Id> m_made; ///< by row
    mutable std::deque<std::size_t> m_age;                           ///< rows of it, oldest first
};

} // namespace velmo::qt
