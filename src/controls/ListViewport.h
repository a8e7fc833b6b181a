#pragma once

#include <algorithm>
#include <cstddef>

namespace velmo::controls {

/// The part of a list that can be seen, whether or not anything shows it.
struct ListViewport
{
    std::size_t first = 1; ///< row at the top, from 1
    std::size_t rows = 32; ///< rows that are seen at once

    /// Scrolls the least that brings `row` into view.
    void EnsureVisible(std::size_t row)
    {
        if (row < first)
            first = row;
        else if (row >= first + rows)
            first = row + 1 - rows;
    }

    /// Scrolls back from behind the end of a list that has become shorter.
    void HoldIn(std::size_t count) { first = std::min(first, count > rows ? count + 1 - rows : 1); }
};

} // namespace velmo::controls
