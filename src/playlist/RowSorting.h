#pragma once

#include "controls/ListRows.h"
#include "ports/Collation.h"

namespace velmo {

enum class SortDirection
{
    Ascending,
    Descending,
};

/// Sorts the rows by `Text` in the user's order. Equal texts keep their order, in both directions.
/// Marks and focus go with their rows.
void SortRows(controls::ListRows& rows, ports::Collation& collation, SortDirection direction);

} // namespace velmo
