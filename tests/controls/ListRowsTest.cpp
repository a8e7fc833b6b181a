#include "controls/ListRows.h"

#include "controls/Form.h"

#include <gtest/gtest.h>

#include <algorithm>
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

TEST(ListRows, ClicksMarkAsTheirKeysSay)
{
    using enum Marking;
    struct Step
    {
        std::size_t row;
        Marking marking;
        const char* texts;
    };
    const Step steps[] = {
        {2, Extend, "1* 2* 3 4 5 " }, // from the row that has the focus at first
        {4, Only,   "1 2 3 4* 5 "  },
        {2, Extend, "1 2* 3* 4* 5 "},
        {5, Extend, "1 2 3 4* 5* " }, // still from the last row that was chosen alone
        {1, Toggle, "1* 2 3 4* 5* "},
        {5, Toggle, "1* 2 3 4* 5 " },
        {3, Keep,   "1* 2 3 4* 5 " },
        {4, Extend, "1 2 3* 4* 5 " },
        {1, Only,   "1* 2 3 4 5 "  },
    };
    ListForm form;
    Fill(form.rows, 5);
    for (const Step& step : steps) {
        form.rows.Choose(step.row, step.marking);
        EXPECT_EQ(Texts(form.rows), step.texts);
        EXPECT_EQ(form.rows.SelectedEntry(), step.row);
        const std::string texts = step.texts;
        EXPECT_EQ(form.rows.MarkedCount(), std::count(texts.begin(), texts.end(), '*'));
    }
    form.rows.Choose(5, Only);
    form.rows.Remove(1); // what was row 5 is chosen from now on
    form.rows.Choose(2, Extend);
    EXPECT_EQ(Texts(form.rows), "2 3* 4* 5* ");
    form.rows.MarkAll();
    form.rows.Remove(2);
    EXPECT_EQ(form.rows.MarkedCount(), 3U);
    form.rows.RemoveMarked();
    EXPECT_EQ(form.rows.MarkedCount(), 0U);
    form.rows.Move(ListStep::Down, Only); // nothing is there, nothing happens
    EXPECT_THROW(form.rows.Choose(1, Only), std::out_of_range);
}

TEST(ListRows, KeysMoveTheFocusAndTheViewFollows)
{
    using enum ListStep;
    struct Step
    {
        ListStep step;
        std::size_t focus;
        std::size_t first;
    };
    const Step steps[] = {
        {Up,       1,   1 },
        {Down,     2,   1 },
        {PageDown, 32,  1 }, // to the bottom of the view first
        {PageDown, 63,  32},
        {Down,     64,  33},
        {PageUp,   33,  33},
        {PageUp,   2,   2 },
        {PageUp,   1,   1 },
        {Last,     100, 69},
        {PageDown, 100, 69},
        {Down,     100, 69},
        {First,    1,   1 },
    };
    ListForm form;
    Fill(form.rows, 100);
    for (const Step& step : steps) {
        form.rows.Move(step.step, Marking::Only);
        EXPECT_EQ(form.rows.SelectedEntry(), step.focus);
        EXPECT_EQ(form.rows.FirstVisibleEntry(), step.first);
        EXPECT_TRUE(form.rows.IsMarked(step.focus));
        EXPECT_EQ(form.rows.MarkedCount(), 1U);
    }
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
