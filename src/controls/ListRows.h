#pragma once

#include "Control.h"

#include <cstddef>
#include <functional>
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
    ListRows(Form& form, std::string name, Bounds bounds);

    std::size_t Count() const;
    const PlaylistEntry& Row(std::size_t row) const;
    /// Replaces the row's content; mark and focus stay.
    void SetRow(std::size_t row, PlaylistEntry entry);

    /// Adds behind the last row, unmarked. The first row of an empty list gets the focus.
    void Add(PlaylistEntry entry);
    /// Takes the row away. If it had the focus, the row that takes its place gets it, else the last
    /// one; otherwise the focus stays with its row's content.
    void Remove(std::size_t row);
    void Clear();

    bool IsMarked(std::size_t row) const;
    /// Sets the selection mark and moves the focus to the row.
    void Mark(std::size_t row);
    /// Clears every mark; the focus stays.
    void DeselectAll();

    /// The row with the focus, 0 if there is none.
    std::size_t SelectedEntry() const;

    /// Scrolls so that the row can be seen. Set by what shows the list; unset while nothing does.
    std::function<void(std::size_t row)> EnsureVisible;

private:
    std::size_t IndexOf(std::size_t row) const;

    std::vector<PlaylistEntry> m_rows;
    std::vector<bool> m_marks; ///< apart, so that clearing a million of them touches little memory
    std::size_t m_focus = 0;
};

} // namespace velmo::controls
