#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace velmo::controls {

/// What a row of a list holds, as views that last until the row changes.
struct RowTexts
{
    std::string_view Text;
    std::string_view Length;
    std::string_view Path;

    bool operator==(const RowTexts&) const = default;
};

/// The texts of a long list, by index from 0. A row costs 24 bytes and one block of memory for its
/// three texts, so that a million rows stay small; the text that changes most lies last in the
/// block and is shortened and lengthened in place where there is room. Indexes are the caller's to
/// check.
class RowStore
{
public:
    std::size_t Count() const { return m_rows.size(); }
    RowTexts At(std::size_t index) const;

    /// Texts of more than 4 GB raise a `std::length_error`. The views may lie in the row itself.
    void Append(const RowTexts& texts);
    void Set(std::size_t index, const RowTexts& texts);
    void SetText(std::size_t index, std::string_view text);

    void Swap(std::size_t first, std::size_t second);
    void Erase(std::size_t index);
    /// Takes all rows away that `marks` names, in one pass. One mark for each row.
    void EraseMarked(const std::vector<bool>& marks);
    void Clear();
    /// The row at `order[i]` moves to i. `order` holds each index once.
    void Reorder(const std::vector<std::size_t>& order);

private:
    struct Row
    {
        std::unique_ptr<char[]> block; // NOLINT(*-avoid-c-arrays): Length, Path, Text in a row
        std::uint32_t capacity = 0;
        std::uint32_t lengthSize = 0;
        std::uint32_t pathSize = 0;
        std::uint32_t textSize = 0;
    };

    static Row MakeRow(const RowTexts& texts);

    std::vector<Row> m_rows;
};

} // namespace velmo::controls
