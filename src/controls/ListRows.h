#pragma once

#include "Control.h"
#include "Controls.h"
#include "ListViewport.h"
#include "RowStore.h"

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

/// What a click or a key does to the selection marks of a list.
enum class Marking
{
    Only,   ///< the row alone is marked
    Toggle, ///< the row's mark is turned round, the others stay
    Extend, ///< the rows from the last `Only` or `Toggle` to this one are marked, and no others
    Keep,   ///< the marks stay as they are
};

/// Where a key takes the focus of a list.
enum class ListStep
{
    Up,
    Down,
    PageUp, ///< to the top of the view; from there a page further
    PageDown,
    First,
    Last,
};

/// The rows of a list, counted from 1, each with a selection mark, and one row with the focus.
/// A row outside 1 to `Count()` raises a `std::out_of_range` and changes nothing.
class ListRows final : public Control
{
public:
    /// `visibleRows` rows are seen at once.
    ListRows(Form& form, std::string name, Bounds bounds, std::size_t visibleRows = 32);

    Property<velmo::controls::Font> Font{*this};
    Property<Colour> ForeColor{*this, 0xFFFF00};
    /// The row under the pointer is underlined.
    Property<bool> HotTracking{*this, false};
    /// A row is selected once the pointer has rested on it for 400 ms.
    Property<bool> HoverSelection{*this, false};
    /// Of the second column, at the right, in twips; 0 for a list of one column. The first column
    /// has the rest. Read when the form is first shown.
    double LengthColumnWidth = 0;

    std::function<void()> DblClick;
    /// A key went down, as its virtual code: Delete 46, Enter 13, F5 116, Left to Down 37 to 40,
    /// Page Up 33, Page Down 34, End 35, Home 36. Comes before the key has an effect on the rows.
    std::function<void(int keyCode)> KeyDown;
    /// A key that makes a character, as its code point; the form's own `KeyPress` follows.
    std::function<void(char32_t)> KeyPress;
    /// The wheel was turned by one step: 120 towards the user's back, -120 towards the user. The
    /// list itself does not scroll by it.
    std::function<void(int delta)> MouseWheel;
    /// Files were dropped: their paths, in their order.
    std::function<void(const std::vector<std::string>&)> OLEDragDrop;
    /// A row's text was edited and the edit was not called off; the row is as it was. If Enter
    /// ended the edit, `KeyDown` with it follows.
    std::function<void(std::size_t row, const std::string& text)> AfterLabelEdit;
    /// Set by what shows the list: has the user edit the text of the row with the focus.
    std::function<void()> StartLabelEdit;
    /// Set by what shows the list: it takes the keyboard.
    std::function<void()> SetFocus;

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
    /// Marks every row; the focus stays.
    void MarkAll();
    std::size_t MarkedCount() const;

    /// The user has chosen the row: it is marked as `marking` says, has the focus and is scrolled
    /// into view. What `Extend` counts from is forgotten, in favour of the row with the focus, when
    /// anyone else changes marks or rows.
    void Choose(std::size_t row, Marking marking);
    /// `Choose` of the row that lies one step from the one with the focus; nothing in an empty
    /// list.
    void Move(ListStep step, Marking marking);

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
    std::size_t Target(ListStep step) const;
    void SetMark(std::size_t index, bool marked);
    void ClearMarks();
    void RowsWereRemoved();

    RowStore m_rows;
    std::vector<bool> m_marks; ///< apart, so that clearing a million of them touches little memory
    std::size_t m_marked = 0;  ///< how many of them are set
    std::size_t m_focus = 0;
    std::size_t m_anchor = 0; ///< the row that `Extend` counts from; 0: the one with the focus
    ListViewport m_viewport;
};

} // namespace velmo::controls
