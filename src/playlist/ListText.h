#pragma once

#include "ListFormats.h"

#include "controls/ListRows.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace velmo {

/// A list file made piece by piece, so that a long list is on its way to the disk while the rest of
/// it is made, and a save needs no second copy of the list in memory.
///
/// The file is UTF-8 with CR LF. Titles come without their numbers. A line end inside a text
/// becomes a blank: it would shift every entry behind it. The rows must stay as they are meanwhile.
class ListText final
{
public:
    /// `titleLine` is the first line of the own format, without line end.
    ListText(ListFormat format, const controls::ListRows& rows, std::string_view titleLine);

    /// The next piece, which lasts until the next call: whole entries, about a quarter of a MiB.
    /// Empty at the end.
    std::string_view Next();

private:
    void AppendEntry(std::size_t number);
    void AppendNumber(std::int32_t number);
    void AppendOneLine(std::string_view text);

    ListFormat m_format;
    const controls::ListRows& m_rows;
    std::size_t m_row = 0; ///< the last one that has been given
    std::string m_piece;   ///< holds the beginning of the file before the first call
    bool m_isComplete = false;
};

/// The whole file at once.
std::string WriteList(ListFormat format,
                      const controls::ListRows& rows,
                      std::string_view titleLine);

} // namespace velmo
