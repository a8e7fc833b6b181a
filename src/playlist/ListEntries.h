#pragma once

#include "EntryText.h"

#include "controls/ListRows.h"

#include <string>
#include <string_view>

namespace velmo {

/// Turns what list files say of entries into rows behind the last one.
class ListEntries final
{
public:
    ListEntries(controls::ListRows& rows, const EntryStyle& style);

    /// `seconds` is a number's text, whatever follows the number.
    void Add(std::string_view title, std::string_view seconds, std::string_view path);
    /// An entry of which nothing else is known.
    void AddTitle(std::string_view title);

private:
    std::string_view NumberedText(std::string_view title);

    controls::ListRows& m_rows;
    EntryStyle m_style;
    std::string m_text; ///< kept from row to row, so that it need not grow anew
};

} // namespace velmo
