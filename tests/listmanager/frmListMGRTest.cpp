#include "listmanager/frmListMGR.h"

#include "support/FakePlayer.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

class Manager : public ::testing::Test
{
protected:
    Manager()
    {
        m_files["/app/list.zvl"] = "#ZVL20#Internal playlist\r\nx\r\n1#/x\r\n";
        m_files["/app/lists/list0.zvl"] = "#ZVL20#Rock\r\na\r\n1#/a\r\nb\r\n2#/b\r\n";
        m_files["/app/lists/Mine.ZVL"] = "foreign";
        m_files["/app/lists/c.m3u"] = "#EXTM3U\r\n";
        m_manager.Load();
    }

    // Rows that are there at first.
    static constexpr std::size_t Internal = 1;
    static constexpr std::size_t Rock = 3;

    std::string Titles() const
    {
        std::string titles;
        for (std::size_t row = 1; row <= m_rows.Count(); ++row)
            titles += (row > 1 ? "; " : "") + m_rows.Row(row).Text;
        return titles;
    }

    test::FakePlayer m_player;
    std::map<std::string, std::string>& m_files = m_player.files.files;
    controls::ListRows& m_pl = m_player.playlist.pl;
    forms::frmListMGR m_form;
    controls::ListRows& m_rows = m_form.lstLists;
    ListStore m_store{m_player.files, "/app/"};
    forms::frmResources& m_menus = m_player.resources;
    frmListMGR m_manager{
        {m_form,             m_player.playlist, m_menus},
        { m_player.list,
         m_player.adding,
         m_store, m_player.tags,
         m_player.settings,
         m_player.collation,
         m_player.files,
         m_player.dialogs}
    };
};

TEST_F(Manager, TheDirectoryIsTheStore)
{
    EXPECT_EQ(Titles(), "Internal playlist; Mine; Rock");
    EXPECT_EQ(m_rows.Row(Rock).Path, "/app/lists/list0.zvl");
    EXPECT_EQ(m_form.scBarMgr.Max, 3 - 7);
    m_files.clear();
    m_manager.lstLists_KeyDown(116);
    EXPECT_EQ(Titles(), "");
}

TEST_F(Manager, AListReplacesThePlaylistEvenIfItHasGone)
{
    m_pl.Add({"1. old", "", "/old"});
    m_player.playlist.tmrInfo.Enabled = true;
    m_rows.Mark(Rock);
    m_rows.KeyDown(13);
    EXPECT_EQ(m_pl.Count(), 2U);
    EXPECT_TRUE(m_pl.IsMarked(1));
    EXPECT_FALSE(m_player.playlist.tmrInfo.Enabled) << "a pass would save the empty list";
    EXPECT_EQ(m_files["/app/list.zvl"], "#ZVL20#Internal playlist\r\na\r\n1#/a\r\nb\r\n2#/b\r\n");
    m_files.erase("/app/lists/list0.zvl");
    m_rows.Mark(Rock);
    m_manager.submnuOpenPlaylist_Click();
    EXPECT_EQ(m_pl.Count(), 0U);
}

TEST_F(Manager, ClonesAddedAndDroppedListsGetIntoTheStore)
{
    m_rows.Mark(Rock);
    m_manager.submnuNewPlaylist_Click();
    EXPECT_EQ(Titles(), "Internal playlist; Mine; Rock; Rock (clone)");
    EXPECT_EQ(m_files["/app/lists/list1.zvl"], m_files["/app/lists/list0.zvl"]);
    m_files["/l/Mine.ZVL"] = "#ZVL20#New\r\n";
    m_files["/l/d.m3u"] = "#EXTM3U\r\n";
    m_player.dialogs.choice.paths = {"/l/Mine.ZVL"};
    m_manager.submnuAddPlaylist_Click();
    EXPECT_EQ(m_player.dialogs.fileDialogs.back().title, "Add playlist");
    EXPECT_EQ(Titles(), "Internal playlist; New; Rock; Rock")
        << "a file of the same name is replaced, and the clone is called as the list";
    m_rows.OLEDragDrop({"/l/d.m3u", "/l/Mine.ZVL", "/l/gone.zvl"});
    EXPECT_EQ(Titles(), "Internal playlist; New; New; Rock; Rock");
    EXPECT_TRUE(m_files.contains("/app/lists/list2.zvl"));
}

TEST_F(Manager, ARenameChangesTheFirstLineUnlessItIsAsLong)
{
    const auto expect =
        [&](const char* file, const char* title, const char* renamed, const char* row) {
            m_files["/app/lists/list0.zvl"] = file;
            m_rows.SetRow(Rock, {"Rock", "", "/app/lists/list0.zvl"});
            m_rows.AfterLabelEdit(Rock, title);
            EXPECT_EQ(m_files["/app/lists/list0.zvl"], renamed);
            EXPECT_EQ(m_rows.Row(Rock).Text, row);
        };
    expect("#ZVL20#Rock\r\na\r\n", "Jazz music", "#ZVL20#Jazz music\r\na\r\n", "Jazz music");
    expect("#ZVL20#Rock\r\na\r\n", "R", "#ZVL20#R\r\na\r\n", "R");
    expect("#ZVL20#Rock\r\na\r\n", "", "#ZVL20#Rock\r\na\r\n", "Rock");
    expect("foreign line\r\na\r\n", "x", "#ZVL20#x\r\na\r\n", "x");
    expect("#ZVL20#Rock", "a\nb", "#ZVL20#a b", "a b");
    expect("\xEF\xBB\xBF#ZVL20#Rock\na\n", "Jazz", "\xEF\xBB\xBF#ZVL20#Rock\na\n", "Rock");
    expect("\xEF\xBB\xBF#ZVL20#Rock\na\n", "étude", "#ZVL20#étude\na\n", "étude");
    expect("#ZVL20#Rock\n\xE9\n", "étude", "#ZVL20#\xE9tude\n\xE9\n", "étude");
    m_rows.Mark(Rock);
    m_manager.lstLists_KeyDown(46); // the key that ended the edit
    EXPECT_EQ(m_rows.Count(), 3U);
    m_player.files.writesFail = true;
    expect("#ZVL20#Rock\r\n", "Jazz music", "#ZVL20#Rock\r\n", "Rock");
    m_player.files.writesFail = false;
    m_files.erase("/app/lists/list0.zvl");
    m_rows.AfterLabelEdit(Rock, "Jazz music");
    EXPECT_FALSE(m_files.contains("/app/lists/list0.zvl"));
}

TEST_F(Manager, TheMenuIsHeadedByTheSelectedList)
{
    const auto expect = [&](controls::MouseButton button, const char* head, bool removable) {
        m_rows.MouseUp({.button = button});
        EXPECT_EQ(m_menus.subName.Caption.Get(), head);
        EXPECT_EQ(m_menus.submnuRemovePlaylist.Enabled, removable);
    };
    m_rows.Mark(Rock);
    expect(controls::MouseButton::Right, "list0.zvl", true);
    m_rows.Mark(Internal);
    expect(controls::MouseButton::Left, "list0.zvl", true);
    expect(controls::MouseButton::Right, "..\\list.zvl (internal)", false);
    m_rows.SetRow(1, {"x", "", R"(C:\My\LISTS\list.zvl)"});
    expect(controls::MouseButton::Right, "list.zvl", true);
    m_rows.Clear();
    expect(controls::MouseButton::Right, "Sdsdsd", true);
}

TEST_F(Manager, TheScrollBarAndTheViewFollowEachOther)
{
    for (int i = 0; i < 17; ++i)
        m_rows.Add({});
    m_manager.UpdateScBarMGR();
    EXPECT_EQ(m_form.scBarMgr.Max, 13);
    m_form.scBarMgr.Change(true, 5);
    EXPECT_EQ(m_rows.FirstVisibleEntry(), 6U);
    m_manager.lstLists_KeyDown(40);
    EXPECT_EQ(m_form.scBarMgr.Position(), 5);
    m_manager.scBarMgr_Change(false, 2);
    EXPECT_EQ(m_rows.FirstVisibleEntry(), 2U);
    m_manager.scBarMgr_Change(false, 0);
    m_manager.scBarMgr_Change(true, 99);
    EXPECT_EQ(m_rows.FirstVisibleEntry(), 2U) << "rows that are not there";
    for (const auto& [delta, first] :
         {std::pair(-120, 5U), std::pair(120, 2U), std::pair(120, 1U)}) {
        m_rows.MouseWheel(delta);
        EXPECT_EQ(m_rows.FirstVisibleEntry(), first);
    }
    EXPECT_EQ(m_form.scBarMgr.Position(), 0);
}

TEST_F(Manager, ItsWindowHandsKeysOn)
{
    std::u32string commands;
    m_manager.Calls.KeyPress = [&](char32_t key) { commands += key; };
    for (const char32_t key : {U'n', U'\r', U'X'})
        m_form.KeyPress(key);
    EXPECT_EQ(commands, U"nX") << "Enter opens the list when it goes down";
    int edits = 0;
    m_rows.StartLabelEdit = [&] { ++edits; };
    m_menus.submnuRenamePlaylist.Click();
    EXPECT_EQ(edits, 1);
}

} // namespace
} // namespace velmo
