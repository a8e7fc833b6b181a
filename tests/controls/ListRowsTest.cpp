#include "controls/ListRows.h"

#include "controls/Form.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

namespace velmo::controls {
namespace {

class ListRowsTest : public testing::Test
{
protected:
    /// Rows named "1" to the count in place of those that are there.
    static void Fill(ListRows& rows, std::size_t count)
    {
        rows.Clear();
        for (std::size_t row = 1; row <= count; ++row)
            rows.Add({.Text = std::to_string(row), .Length = "", .Path = ""});
    }

    static std::string Texts(const ListRows& rows)
    {
        std::string texts;
        for (std::size_t row = 1; row <= rows.Count(); ++row)
            texts += rows.Row(row).Text + (rows.IsMarked(row) ? "* " : " ");
        return texts;
    }
    std::string Texts() const { return Texts(m_rows); }

    Form m_form{"list", "", 1, 1, BorderStyle::None};
    ListRows m_rows{m_form, "rows", {}};
};

TEST_F(ListRowsTest, FirstRowOfAnEmptyListGetsTheFocusAndKeepsIt)
{
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(m_rows.SelectedEntry(), 0U);
        m_rows.Add({});
        m_rows.Add({});
        EXPECT_EQ(m_rows.SelectedEntry(), 1U);
        m_rows.Mark(2);
        m_rows.Add({});
        EXPECT_EQ(m_rows.SelectedEntry(), 2U);
        m_rows.Clear();
    }
    Fill(m_rows, 2);
    EXPECT_EQ(Texts(), "1 2 ");
}

TEST_F(ListRowsTest, ClicksMarkAsTheirKeysSay)
{
    using enum Marking;
    Fill(m_rows, 5);
    const auto expect = [&](std::size_t row, Marking marking, const std::string& texts) {
        m_rows.Choose(row, marking);
        EXPECT_EQ(Texts(), texts);
        EXPECT_EQ(m_rows.SelectedEntry(), row);
        EXPECT_EQ(m_rows.MarkedCount(), std::count(texts.begin(), texts.end(), '*'));
    };
    expect(2, Extend, "1* 2* 3 4 5 "); // from the row that has the focus at first
    expect(4, Only, "1 2 3 4* 5 ");
    expect(2, Extend, "1 2* 3* 4* 5 ");
    expect(5, Extend, "1 2 3 4* 5* "); // still from the last row that was chosen alone
    expect(1, Toggle, "1* 2 3 4* 5* ");
    expect(5, Toggle, "1* 2 3 4* 5 ");
    expect(3, Keep, "1* 2 3 4* 5 ");
    expect(4, Extend, "1 2 3* 4* 5 ");
    m_rows.DeselectAll();
    EXPECT_EQ(Texts(), "1 2 3 4 5 ");
    EXPECT_EQ(m_rows.SelectedEntry(), 4U);
    m_rows.Choose(5, Only);
    m_rows.Remove(1); // what was row 5 is chosen from now on
    expect(2, Extend, "2 3* 4* 5* ");
    m_rows.MarkAll();
    m_rows.Remove(2);
    EXPECT_EQ(m_rows.MarkedCount(), 3U);
    m_rows.RemoveMarked();
    EXPECT_EQ(m_rows.MarkedCount(), 0U);
    m_rows.Move(ListStep::Down, Only); // nothing is there, nothing happens
    EXPECT_THROW(m_rows.Choose(1, Only), std::out_of_range);
}

TEST_F(ListRowsTest, KeysMoveTheFocusAndTheViewFollows)
{
    using enum ListStep;
    EXPECT_EQ(m_rows.FirstVisibleEntry(), 0U);
    Fill(m_rows, 100);
    const auto expect = [&](ListStep step, std::size_t focus, std::size_t first) {
        m_rows.Move(step, Marking::Only);
        EXPECT_EQ(m_rows.SelectedEntry(), focus);
        EXPECT_EQ(m_rows.FirstVisibleEntry(), first);
    };
    expect(Up, 1, 1);
    expect(PageDown, 32, 1); // to the bottom of the view first
    expect(PageDown, 63, 32);
    expect(Down, 64, 33);
    expect(PageUp, 33, 33);
    expect(PageUp, 2, 2);
    expect(PageUp, 1, 1);
    expect(Last, 100, 69);
    expect(PageDown, 100, 69);
    expect(Down, 100, 69);
    m_rows.Remove(1);
    EXPECT_EQ(m_rows.FirstVisibleEntry(), 68U) << "the last row stays at the bottom";
    m_rows.EnsureVisible(99);
    EXPECT_EQ(m_rows.FirstVisibleEntry(), 68U) << "it is in view";
    expect(First, 1, 1);
}

TEST_F(ListRowsTest, RemovingLeavesTheFocusWhereTheEyeExpectsIt)
{
    using Row = std::size_t;
    const auto expect = [&](Row count, Row focus, Row removed, Row newFocus, const char* texts) {
        Fill(m_rows, count);
        m_rows.Mark(focus);
        m_rows.Remove(removed);
        EXPECT_EQ(m_rows.SelectedEntry(), newFocus);
        EXPECT_EQ(Texts(), texts);
    };
    expect(4, 2, 2, 2, "1 3 4 "); // the row that takes its place
    expect(4, 4, 4, 3, "1 2 3 "); // else the last
    expect(1, 1, 1, 0, "");       // else none
    expect(4, 3, 1, 2, "2 3* 4 ");
    expect(4, 2, 3, 2, "1 2* 4 ");
}

TEST_F(ListRowsTest, RemovingTheMarkedOnesIsRemovingOneByOne)
{
    ListRows oneByOne{m_form, "rows", {}};
    for (const std::string marked :
         {".....", "x....", "....x", ".xxx.", "...xx", ".x.xx", "xxxxx"}) {
        for (ListRows* rows : {&m_rows, &oneByOne}) {
            Fill(*rows, 5);
            for (std::size_t row = 1; row <= 5; ++row)
                if (marked[row - 1] == 'x')
                    rows->Mark(row);
        }
        m_rows.RemoveMarked();
        for (std::size_t row = 5; row > 0; --row)
            if (marked[row - 1] == 'x')
                oneByOne.Remove(row);
        EXPECT_EQ(Texts(), Texts(oneByOne));
        EXPECT_EQ(m_rows.SelectedEntry(), oneByOne.SelectedEntry()) << marked;
    }
}

TEST_F(ListRowsTest, ATextChangesInPlaceAndLeavesTheOthersAlone)
{
    m_rows.Add({.Text = "12. title", .Length = "01:00", .Path = "/m/a"});
    m_rows.SetText(1, m_rows.Texts(1).Text.substr(4)); // a piece of itself
    EXPECT_EQ(m_rows.Row(1), (PlaylistEntry{"title", "01:00", "/m/a"}));
    for (const char* text : {"7. title", "a title that is longer than there is room for", ""}) {
        m_rows.SetText(1, text);
        EXPECT_EQ(m_rows.Row(1), (PlaylistEntry{text, "01:00", "/m/a"}));
    }
}

TEST_F(ListRowsTest, AnOrderTakesMarksAndFocusAlongAndASwapDoesNot)
{
    Fill(m_rows, 4);
    m_rows.Mark(4);
    m_rows.Mark(1);
    m_rows.Reorder({3, 1, 4, 2});
    EXPECT_EQ(Texts(), "3 1* 4* 2 ");
    EXPECT_EQ(m_rows.SelectedEntry(), 2U);
    m_rows.SwapContent(1, 2);
    EXPECT_EQ(Texts(), "1 3* 4* 2 ");
    EXPECT_EQ(m_rows.SelectedEntry(), 2U);
}

TEST_F(ListRowsTest, RowsOutsideTheListAreAnErrorAndOnlyRealChangesAreTold)
{
    int changes = 0;
    m_rows.Changed = [&] { ++changes; };
    m_rows.Clear();
    m_rows.DeselectAll();
    EXPECT_EQ(changes, 0);
    Fill(m_rows, 1);
    for (int round = 0; round < 2; ++round) {
        m_rows.Mark(1);
        m_rows.SetRow(1, {.Text = "new", .Length = "", .Path = ""});
        EXPECT_EQ(changes, 3);
    }
    for (const std::size_t row : {0U, 2U}) {
        EXPECT_THROW(m_rows.Row(row), std::out_of_range);
        EXPECT_THROW(m_rows.SetRow(row, {}), std::out_of_range);
        EXPECT_THROW(m_rows.EnsureVisible(row), std::out_of_range);
        EXPECT_THROW(m_rows.SwapContent(1, row), std::out_of_range);
        EXPECT_THROW(m_rows.Remove(row), std::out_of_range);
        EXPECT_THROW(m_rows.Mark(row), std::out_of_range);
        EXPECT_THROW(m_rows.IsMarked(row), std::out_of_range);
    }
    EXPECT_EQ(changes, 3);
    EXPECT_EQ(Texts(), "new* ");
}

} // namespace
} // namespace velmo::controls
