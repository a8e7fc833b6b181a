#pragma once

#include "Control.h"
#include "ListViewport.h"
#include "RowStore.h"

#include <cstddef>
#include <string>
#include <vector>

namespace velmo::controls {

/// One row of the playlist: what the first and the second column show, and the path that plays.
struct PlaylistEntry
{
    std::string Text;
    std::string Length;
    std::string Path;

    bool operator==(const PlaylistEntry&) const = default;
};

/// The rows of a list, counted from 1, each with a selection mark, and one row with the focus.
/// A row outside 1 to `Count()` raises a `std::out_of_range` and changes nothing.
class ListRows final : public Control
{
public:
    /// `visibleRows` rows are seen at once.
    ListRows(Form& form, std::string name, Bounds bounds, std::size_t visibleRows = 32);

    std::size_t Count() const;
    /// A copy of the row.
    PlaylistEntry Row(std::size_t row) const;
    /// The row's own texts; they last until the row changes or goes.
    RowTexts Texts(std::size_t row) const;
    /// Replaces the row's content; mark and focus stay.
    void SetRow(std::size_t row, const PlaylistEntry& entry);
    /// Replaces the first of the row's texts; `text` may be a piece of it.
    void SetText(std::size_t row, std::string_view text);

    /// Adds behind the last row, unmarked. The first row of an empty list gets the focus.
    void Add(const PlaylistEntry& entry);
    void AddTexts(const RowTexts& texts);
    /// Takes the row away. If it had the focus, the row that takes its place gets it, else the last
    /// one; otherwise the focus stays with its row's content.
    void Remove(std::size_t row);
    /// `Remove` of every marked row, in one pass.
    void RemoveMarked();
    void Clear();

    /// Exchanges what two rows hold; marks and focus stay where they are.
    void SwapContent(std::size_t first, std::size_t second);
    /// The row `order[i - 1]` becomes row i, with its mark; the focus goes with its row. `order`
    /// holds every row once.
    void Reorder(const std::vector<std::size_t>& order);

    bool IsMarked(std::size_t row) const;
    /// Sets the selection mark and moves the focus to the row.
    void Mark(std::size_t row);
    /// Clears every mark; the focus stays.
    void DeselectAll();

    /// The row with the focus, 0 if there is none.
    std::size_t SelectedEntry() const;

    /// The row at the top of the view; 0 if the list is empty.
    std::size_t FirstVisibleEntry() const;
    /// Scrolls the least that brings the row into view.
    void EnsureVisible(std::size_t row);
    /// How many rows are seen at once.
    std::size_t VisibleRows() const;

private:
    std::size_t IndexOf(std::size_t row) const;
    void RowsWereRemoved();

    RowStore m_rows;
    std::vector<bool> m_marks; ///< apart, so that clearing a million of them touches little memory
    std::size_t m_focus = 0;
    ListViewport m_viewport;
};

} // namespace velmo::controls
