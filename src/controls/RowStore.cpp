#include "RowStore.h"

#include <cstring>
#include <limits>
#include <stdexcept>
#include <utility>

namespace velmo::controls {

namespace {

char* Put(char* at, std::string_view text)
{
    if (!text.empty())
        std::memmove(at, text.data(), text.size());
    return at + text.size();
}

} // namespace

RowTexts RowStore::At(std::size_t index) const
{
    const Row& row = m_rows[index];
    const char* const block = row.block.get();
    return {
        .Text = {block + row.lengthSize + row.pathSize, row.textSize  },
        .Length = {block,                                 row.lengthSize},
        .Path = {block + row.lengthSize,                row.pathSize  },
    };
}

void RowStore::Append(const RowTexts& texts)
{
    m_rows.push_back(MakeRow(texts));
}

void RowStore::Set(std::size_t index, const RowTexts& texts)
{
    m_rows[index] = MakeRow(texts);
}

void RowStore::SetText(std::size_t index, std::string_view text)
{
    Row& row = m_rows[index];
    const std::size_t before = std::size_t{row.lengthSize} + row.pathSize;
    if (before + text.size() <= row.capacity) {
        Put(row.block.get() + before, text);
        row.textSize = static_cast<std::uint32_t>(text.size());
        return;
    }
    const RowTexts old = At(index);
    row = MakeRow({.Text = text, .Length = old.Length, .Path = old.Path});
}

void RowStore::Swap(std::size_t first, std::size_t second)
{
    std::swap(m_rows[first], m_rows[second]);
}

void RowStore::Erase(std::size_t index)
{
    m_rows.erase(m_rows.begin() + static_cast<std::ptrdiff_t>(index));
}

void RowStore::EraseMarked(const std::vector<bool>& marks)
{
    std::size_t kept = 0;
    for (std::size_t index = 0; index < m_rows.size(); ++index)
        if (!marks[index])
            std::swap(m_rows[kept++], m_rows[index]);
    m_rows.resize(kept);
}

void RowStore::Clear()
{
    std::vector<Row>().swap(m_rows);
}

void RowStore::Reorder(const std::vector<std::size_t>& order)
{
    std::vector<Row> rows;
    rows.reserve(order.size());
    for (const std::size_t index : order)
        rows.push_back(std::move(m_rows[index]));
    m_rows = std::move(rows);
}

RowStore::Row RowStore::MakeRow(const RowTexts& texts)
{
    const std::size_t size = texts.Length.size() + texts.Path.size() + texts.Text.size();
    if (size > std::numeric_limits<std::uint32_t>::max())
        throw std::length_error("a row of a list is too long");
    Row row{
        .block = std::unique_ptr<char[]>(new char[size]), // NOLINT(*-avoid-c-arrays)
        .capacity = static_cast<std::uint32_t>(size),
        .lengthSize = static_cast<std::uint32_t>(texts.Length.size()),
        .pathSize = static_cast<std::uint32_t>(texts.Path.size()),
        .textSize = static_cast<std::uint32_t>(texts.Text.size()),
    };
    Put(Put(Put(row.block.get(), texts.Length), texts.Path), texts.Text);
    return row;
}

} // namespace velmo::controls
