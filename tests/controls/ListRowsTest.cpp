#include "controls/ListRows.h"

#include "controls/Form.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string_view>

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

TEST(ListRows, RemovingTheMarkedOnesIsRemovingOneByOne)
{
    constexpr const char* Marks[] = {".....", "x....", "....x", ".xxx.", "...xx", ".x.xx", "xxxxx"};
    for (const std::string_view marked : Marks) {
        ListForm atOnce;
        ListForm oneByOne;
        for (ListForm* form : {&atOnce, &oneByOne}) {
            Fill(form->rows, 5);
            for (std::size_t row = 1; row <= marked.size(); ++row)
                if (marked[row - 1] == 'x')
                    form->rows.Mark(row);
        }
        atOnce.rows.RemoveMarked();
        for (std::size_t row = 1; row <= oneByOne.rows.Count();)
            if (oneByOne.rows.IsMarked(row))
                oneByOne.rows.Remove(row);
            else
                ++row;
        EXPECT_EQ(Texts(atOnce.rows), Texts(oneByOne.rows));
        EXPECT_EQ(atOnce.rows.SelectedEntry(), oneByOne.rows.SelectedEntry());
    }
}

TEST(ListRows, ATextChangesInPlaceAndLeavesTheOthersAlone)
{
    ListForm form;
    form.rows.Add({.Text = "12. title", .Length = "01:00", .Path = "/m/a"});
    form.rows.SetText(1, form.rows.Texts(1).Text.substr(4)); // a piece of itself
    EXPECT_EQ(form.rows.Row(1), (PlaylistEntry{"title", "01:00", "/m/a"}));
    for (const char* text : {"7. title", "a title that is longer than there is room for", ""}) {
        form.rows.SetText(1, text);
        EXPECT_EQ(form.rows.Row(1), (PlaylistEntry{text, "01:00", "/m/a"}));
    }
}

TEST(ListRows, AnOrderTakesMarksAndFocusAlongAndASwapDoesNot)
{
    ListForm form;
    Fill(form.rows, 4);
    form.rows.Mark(4);
    form.rows.Mark(1);
    form.rows.Reorder({3, 1, 4, 2});
    EXPECT_EQ(Texts(form.rows), "3 1* 4* 2 ");
    EXPECT_EQ(form.rows.SelectedEntry(), 2U);
    form.rows.SwapContent(1, 2);
    EXPECT_EQ(Texts(form.rows), "1 3* 4* 2 ");
    EXPECT_EQ(form.rows.SelectedEntry(), 2U);
}

TEST(ListRows, TheViewScrollsTheLeastAndStaysInTheList)
{
    ListForm form;
    EXPECT_EQ(form.rows.FirstVisibleEntry(), 0U);
    Fill(form.rows, 100);
    const std::pair<std::size_t, std::size_t> steps[] = {
        {32,  1 },
        {33,  2 },
        {2,   2 },
        {1,   1 },
        {100, 69},
        {70,  69},
        {50,  50},
        {100, 69},
    };
    for (const auto& [row, first] : steps) {
        form.rows.EnsureVisible(row);
        EXPECT_EQ(form.rows.FirstVisibleEntry(), first) << row;
    }
    form.rows.Remove(1);
    EXPECT_EQ(form.rows.FirstVisibleEntry(), 68U) << "the last row stays at the bottom";
    form.rows.Clear();
    Fill(form.rows, 1);
    EXPECT_EQ(form.rows.FirstVisibleEntry(), 1U);
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
        EXPECT_THROW(form.rows.EnsureVisible(row), std::out_of_range);
        EXPECT_THROW(form.rows.SwapContent(1, row), std::out_of_range);
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
