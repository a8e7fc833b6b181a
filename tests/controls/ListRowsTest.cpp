#include "controls/ListRows.h"

#include "controls/Form.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace velmo::controls {
namespace {

class ListForm final : public Form
{
public:
    ListForm()
        : Form("list", "", 1, 1, BorderStyle::None)
    {}
    ListRows rows{*this, "rows", {}};
};

/// Rows named "1" to the count, row 1 with the focus unless another is marked.
void Fill(ListRows& rows, std::size_t count)
{
    for (std::size_t row = 1; row <= count; ++row)
        rows.Add({.Text = std::to_string(row), .Length = "", .Path = ""});
}

std::string Texts(const ListRows& rows)
{
    std::string texts;
    for (std::size_t row = 1; row <= rows.Count(); ++row)
        texts += rows.Row(row).Text + (rows.IsMarked(row) ? "* " : " ");
    return texts;
}

TEST(ListRows, FirstRowOfAnEmptyListGetsTheFocusAndKeepsIt)
{
    ListForm form;
    EXPECT_EQ(form.rows.SelectedEntry(), 0U);
    Fill(form.rows, 1);
    EXPECT_EQ(form.rows.SelectedEntry(), 1U);
    form.rows.Add({});
    form.rows.Mark(2);
    form.rows.Add({});
    EXPECT_EQ(form.rows.SelectedEntry(), 2U);
}

TEST(ListRows, MarkingMovesTheFocusAndDeselectingDoesNot)
{
    ListForm form;
    Fill(form.rows, 4);
    form.rows.Mark(2);
    form.rows.Mark(4);
    EXPECT_EQ(Texts(form.rows), "1 2* 3 4* ");
    EXPECT_EQ(form.rows.SelectedEntry(), 4U);
    form.rows.DeselectAll();
    EXPECT_EQ(Texts(form.rows), "1 2 3 4 ");
    EXPECT_EQ(form.rows.SelectedEntry(), 4U);
}

TEST(ListRows, RemovingLeavesTheFocusWhereTheEyeExpectsIt)
{
    struct Case
    {
        std::size_t count;
        std::size_t focus;
        std::size_t remove;
        std::size_t newFocus;
        const char* texts;
    };
    const Case cases[] = {
        {4, 2, 2, 2, "1 3 4 " }, // the row that takes its place
        {4, 4, 4, 3, "1 2 3 " }, // else the last
        {1, 1, 1, 0, ""       }, // else none
        {4, 3, 1, 2, "2 3* 4 "}, // the focus stays with its content
        {4, 2, 3, 2, "1 2* 4 "},
    };
    for (const Case& c : cases) {
        ListForm form;
        Fill(form.rows, c.count);
        form.rows.Mark(c.focus);
        form.rows.Remove(c.remove);
        EXPECT_EQ(form.rows.SelectedEntry(), c.newFocus);
        EXPECT_EQ(Texts(form.rows), c.texts);
    }
}

TEST(ListRows, RemovingTouchesNoMarkOfAnotherRow)
{
    ListForm form;
    Fill(form.rows, 5);
    form.rows.Mark(1);
    form.rows.Mark(3);
    form.rows.Mark(5);
    form.rows.Remove(2);
    EXPECT_EQ(Texts(form.rows), "1* 3* 4 5* ");
}

TEST(ListRows, ClearingTakesTheFocusAndTheNextRowGetsIt)
{
    ListForm form;
    Fill(form.rows, 3);
    form.rows.Mark(3);
    form.rows.Clear();
    EXPECT_EQ(form.rows.SelectedEntry(), 0U);
    Fill(form.rows, 2);
    EXPECT_EQ(form.rows.SelectedEntry(), 1U);
    EXPECT_EQ(Texts(form.rows), "1 2 ");
}

TEST(ListRows, RowsOutsideTheListAreAnErrorAndChangeNothing)
{
    ListForm form;
    Fill(form.rows, 2);
    int changes = 0;
    form.rows.Changed = [&] { ++changes; };
    for (const std::size_t row : {std::size_t{0}, std::size_t{3}}) {
        EXPECT_THROW(form.rows.Row(row), std::out_of_range);
        EXPECT_THROW(form.rows.SetRow(row, {}), std::out_of_range);
        EXPECT_THROW(form.rows.Remove(row), std::out_of_range);
        EXPECT_THROW(form.rows.Mark(row), std::out_of_range);
        EXPECT_THROW(form.rows.IsMarked(row), std::out_of_range);
    }
    EXPECT_EQ(changes, 0);
    EXPECT_EQ(Texts(form.rows), "1 2 ");
}

TEST(ListRows, TellsOfRealChangesOnly)
{
    ListForm form;
    int changes = 0;
    form.rows.Changed = [&] { ++changes; };
    form.rows.Clear();
    form.rows.DeselectAll();
    EXPECT_EQ(changes, 0);
    Fill(form.rows, 1);
    form.rows.Mark(1);
    form.rows.SetRow(1, {.Text = "new", .Length = "", .Path = ""});
    EXPECT_EQ(changes, 3);
    form.rows.Mark(1);
    form.rows.SetRow(1, {.Text = "new", .Length = "", .Path = ""});
    EXPECT_EQ(changes, 3);
    EXPECT_EQ(Texts(form.rows), "new* ");
}

} // namespace
} // namespace velmo::controls
