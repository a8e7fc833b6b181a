#include "RowSorting.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

namespace velmo {

namespace {

/// A row and its key. The key's first bytes stand beside it as a number, which settles nearly every
/// comparison without a look at the text.
struct KeyedRow
{
    std::uint64_t head = 0;
    std::string key;
    std::size_t row = 0;

    bool operator<(const KeyedRow& other) const
    {
        return head != other.head ? head < other.head : key < other.key;
    }
};

/// The first eight bytes as a number that is ordered as they are.
std::uint64_t HeadOf(const std::string& key)
{
    constexpr unsigned BitsPerByte = 8;
    std::uint64_t head = 0;
    for (std::size_t i = 0; i < sizeof head; ++i)
        head = (head << BitsPerByte) | (i < key.size() ? static_cast<unsigned char>(key[i]) : 0U);
    return head;
}

} // namespace

void SortRows(controls::ListRows& rows, ports::Collation& collation, SortDirection direction)
{
    std::vector<KeyedRow> keyed;
    keyed.reserve(rows.Count());
    for (std::size_t row = 1; row <= rows.Count(); ++row) {
        std::string key = collation.SortKey(rows.Texts(row).Text);
        const std::uint64_t head = HeadOf(key);
        keyed.push_back({head, std::move(key), row});
    }
    if (direction == SortDirection::Ascending)
        std::stable_sort(keyed.begin(), keyed.end());
    else
        std::stable_sort(
            keyed.begin(), keyed.end(), [](const auto& a, const auto& b) { return b < a; });
    std::vector<std::size_t> order;
    order.reserve(keyed.size());
    for (const KeyedRow& row : keyed)
        order.push_back(row.row);
    rows.Reorder(order);
}

} // namespace velmo
