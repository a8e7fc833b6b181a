#include "listmanager/frmListMGR.h"

#include "listmanager/ListRename.h"
#include "support/FakePlayer.h"

#include <gmock/gmock.h>

namespace velmo {
namespace {

using ::testing::ElementsAre;

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

    std::vector<std::string> Titles() const
    {
        std::vector<std::string> titles;
        for (std::size_t row = 1; row <= m_rows.Count(); ++row)
            titles.push_back(m_rows.Row(row).Text);
        return titles;
    }

    void Select(const std::string& title)
    {
        for (std::size_t row = 1; row <= m_rows.Count(); ++row)
            if (m_rows.Row(row).Text == title)
                m_rows.Mark(row);
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
    EXPECT_THAT(Titles(), ElementsAre("Internal playlist", "Mine", "Rock"));
    EXPECT_EQ(m_rows.Row(3).Path, "/app/lists/list0.zvl");
    EXPECT_EQ(m_form.scBarMgr.Max, 3 - 7);
    m_files.clear();
    m_manager.lstLists_KeyDown(116);
    EXPECT_THAT(Titles(), ElementsAre());
}

TEST_F(Manager, AListReplacesThePlaylistEvenIfItHasGone)
{
    m_pl.Add({"1. old", "", "/old"});
    m_player.playlist.tmrInfo.Enabled = true;
    Select("Rock");
    m_rows.KeyDown(13);
    EXPECT_EQ(m_pl.Count(), 2U);
    EXPECT_TRUE(m_pl.IsMarked(1));
    EXPECT_FALSE(m_player.playlist.tmrInfo.Enabled) << "a pass would save the empty list";
    EXPECT_EQ(m_files["/app/list.zvl"], "#ZVL20#Internal playlist\r\na\r\n1#/a\r\nb\r\n2#/b\r\n");
    Select("Internal playlist");
    m_manager.submnuOpenPlaylist_Click();
    EXPECT_EQ(m_pl.Row(2).Text, "2. b");
    m_files.erase("/app/lists/list0.zvl");
    Select("Rock");
    m_manager.submnuOpenPlaylist_Click();
    EXPECT_EQ(m_pl.Count(), 0U);
}

TEST_F(Manager, ClonesAddedAndDroppedListsGetIntoTheStore)
{
    Select("Rock");
    m_manager.submnuNewPlaylist_Click();
    EXPECT_THAT(Titles(), ElementsAre("Internal playlist", "Mine", "Rock", "Rock (clone)"));
    EXPECT_EQ(m_files["/app/lists/list1.zvl"], m_files["/app/lists/list0.zvl"]);
    m_files["/l/Mine.ZVL"] = "#ZVL20#New\r\n";
    m_files["/l/d.m3u"] = "#EXTM3U\r\n";
    m_player.dialogs.choice.paths = {"/l/Mine.ZVL"};
    m_manager.submnuAddPlaylist_Click();
    EXPECT_EQ(m_player.dialogs.fileDialogs.back().title, "Add playlist");
    EXPECT_THAT(Titles(), ElementsAre("Internal playlist", "New", "Rock", "Rock"))
        << "a file of the same name is replaced, and the clone is called as the list";
    m_rows.OLEDragDrop({"/l/d.m3u", "/l/Mine.ZVL", "/l/gone.zvl"});
    EXPECT_THAT(Titles(), ElementsAre("Internal playlist", "New", "New", "Rock", "Rock"));
    EXPECT_TRUE(m_files.contains("/app/lists/list2.zvl"));
}

TEST_F(Manager, OnlyStoredListsCanBeRemoved)
{
    Select("Internal playlist");
    m_manager.lstLists_KeyDown(46);
    Select("Rock");
    m_manager.lstLists_KeyDown(46);
    EXPECT_THAT(Titles(), ElementsAre("Internal playlist", "Mine"));
    EXPECT_TRUE(m_files.contains("/app/list.zvl"));
    EXPECT_FALSE(m_files.contains("/app/lists/list0.zvl"));
}

TEST_F(Manager, ARenameChangesTheFirstLineUnlessItIsAsLong)
{
    struct Case
    {
        const char* file;
        const char* title;
        const char* renamed;
        const char* row;
    };
    const Case cases[] = {
        {"#ZVL20#Rock\r\na\r\n",         "Jazz music",   "#ZVL20#Jazz music\r\na\r\n",   "Jazz music"  },
        {"#ZVL20#Rock\r\na\r\n",         "R",            "#ZVL20#R\r\na\r\n",            "R"           },
        {"#ZVL20#Rock\r\na\r\n",         "Jazz",         "#ZVL20#Rock\r\na\r\n",         "Rock"        },
        {"#ZVL20#Rock\r\na\r\n",         "",             "#ZVL20#Rock\r\na\r\n",         "Rock"        },
        {"foreign line\r\na\r\n",        "x",            "#ZVL20#x\r\na\r\n",            "x"           },
        {"#ZVL20#Rock",                  "a\nb",         "#ZVL20#a b",                   "a b"         },
        {"\xEF\xBB\xBF#ZVL20#Rock\na\n", "Jazz",         "\xEF\xBB\xBF#ZVL20#Rock\na\n", "Rock"        },
        {"\xEF\xBB\xBF#ZVL20#Rock\na\n",
         "\xC3\xA9tude",                                 "#ZVL20#\xC3\xA9tude\na\n",
         "\xC3\xA9tude"                                                                                },
        {"#ZVL20#Rock\n\xE9\n",          "\xC3\xA9tude", "#ZVL20#\xE9tude\n\xE9\n",      "\xC3\xA9tude"},
        {"",                             "x",            "#ZVL20#x",                     "x"           },
    };
    for (const Case& c : cases) {
        m_files["/app/lists/list0.zvl"] = c.file;
        m_rows.SetRow(3, {"Rock", "", "/app/lists/list0.zvl"});
        m_rows.AfterLabelEdit(3, c.title);
        EXPECT_EQ(m_files["/app/lists/list0.zvl"], c.renamed);
        EXPECT_EQ(m_rows.Row(3).Text, c.row);
    }
    EXPECT_EQ(m_manager.EditMark, "edited");
    m_rows.Mark(3);
    m_manager.lstLists_KeyDown(46); // the key that ended the edit
    EXPECT_EQ(m_rows.Count(), 3U);
    EXPECT_EQ(m_manager.EditMark, "");
    m_player.files.writesFail = true;
    m_files["/app/lists/list0.zvl"] = "#ZVL20#Rock\r\n";
    m_manager.lstLists_AfterLabelEdit(3, "Jazz music");
    EXPECT_EQ(m_rows.Row(3).Text, "Rock");
    EXPECT_EQ(RenameList(m_player.files, "/gone.zvl", "x"), ports::WriteResult::Failed);
}

TEST_F(Manager, TheMenuIsHeadedByTheSelectedList)
{
    Select("Rock");
    int opened = 0;
    m_menus.Menu6.PopUpAtPointer = [&] { ++opened; };
    m_rows.MouseUp({.button = controls::MouseButton::Left});
    EXPECT_EQ(opened, 0);
    m_rows.MouseUp({.button = controls::MouseButton::Right});
    EXPECT_EQ(opened, 1);
    EXPECT_EQ(m_menus.subName.Caption.Get(), "list0.zvl");
    EXPECT_TRUE(m_menus.submnuRemovePlaylist.Enabled);
    EXPECT_FALSE(m_menus.subName.Enabled);
    Select("Internal playlist");
    m_manager.PrepareMenu();
    EXPECT_EQ(m_menus.subName.Caption.Get(), "..\\list.zvl (internal)");
    EXPECT_FALSE(m_menus.submnuRemovePlaylist.Enabled);
    m_rows.SetRow(1, {"x", "", R"(C:\My\LISTS\list.zvl)"});
    m_manager.PrepareMenu();
    EXPECT_EQ(m_menus.subName.Caption.Get(), "list.zvl");
    m_rows.Clear();
    m_manager.PrepareMenu();
    EXPECT_EQ(m_menus.subName.Caption.Get(), "Sdsdsd");
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
    for (const auto& [delta, first] : {
             std::pair(-120, 5U), {-120, 8U},
               {120,  5U},
               {120,  2U},
               {120,  1U}
    }) {
        m_rows.MouseWheel(delta);
        EXPECT_EQ(m_rows.FirstVisibleEntry(), first);
        EXPECT_EQ(m_form.scBarMgr.Position(), static_cast<int>(first) - 1);
    }
}

TEST_F(Manager, ItsWindowFillsOnceAndCloses)
{
    std::u32string commands;
    m_manager.Calls.KeyPress = [&](char32_t key) { commands += key; };
    for (const char32_t key : {U'n', U'\r', U'X'})
        m_form.KeyPress(key);
    EXPECT_EQ(commands, U"nX") << "Enter opens the list when it goes down";
    Select("Rock");
    m_rows.DblClick();
    EXPECT_EQ(m_pl.Count(), 2U);
    int edits = 0;
    m_rows.StartLabelEdit = [&] { ++edits; };
    m_menus.submnuRenamePlaylist.Click();
    EXPECT_EQ(edits, 1);

    int hidden = 0;
    m_manager.Calls.Hide = [&] { ++hidden; };
    const controls::Image& close = m_form.imgClose;
    close.MouseMove({});
    EXPECT_EQ(close.Picture.Get(), close.States.hover);
    m_form.MouseMove({});
    EXPECT_EQ(close.Picture.Get(), close.States.normal);
    close.MouseDown({.button = controls::MouseButton::Left});
    EXPECT_EQ(close.Picture.Get(), close.States.pressed);
    EXPECT_EQ(hidden, 0);
    close.MouseUp({.button = controls::MouseButton::Left});
    EXPECT_EQ(hidden, 1);
    m_files.clear();
    m_manager.Load();
    EXPECT_EQ(m_rows.Count(), 3U) << "it is loaded already";
}

} // namespace
} // namespace velmo
