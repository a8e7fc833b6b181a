#include "ListFixture.h"

#include <gmock/gmock.h>

namespace velmo {
namespace {

using ::testing::ElementsAre;

class ListDialog : public ::testing::Test
{
protected:
    std::vector<std::string> Opened(const std::string& path)
    {
        m_player.dialogs.choice = {.paths = {path}, .label = {}};
        m_player.listDialogs.OpenListDialog();
        return m_player.Texts();
    }

    void SaveAs(const std::string& path, const std::string& label)
    {
        m_player.dialogs.choice = {.paths = {path}, .label = label};
        m_player.listDialogs.SaveListDialog();
    }

    test::ListFixture m_player;
    std::map<std::string, std::string>& m_files = m_player.files.files;
};

TEST_F(ListDialog, AnOpenedListJoinsTheRowsAndACopyOfAllIsStored)
{
    m_files = {
        {"/l/b.m3u",             "#EXTM3U\r\n#EXTINF:61,b\r\n/m/b\r\n"},
        {"/l/bad.zvl",           "#zvl20\r\n"                         },
        {"/l/notzvl",            "#ZVL20\r\na\r\n1#a\r\n"             },
        {"/app/lists/list0.zvl", ""                                   },
    };
    m_player.listDialogs.OpenListDialog();
    EXPECT_EQ(m_player.dialogs.fileDialogs.back().folder, "/app/lists/");
    EXPECT_TRUE(m_player.dialogs.fileDialogs.back().filter.starts_with(
        "All Known Formats (*.m3u,*.pls,*.zvl)|*.m3u;*.pls;*.zvl|M3U List"));
    EXPECT_TRUE(m_player.files.directories.empty()) << "cancelled: no directory is made";
    m_player.Fill({"1. z"});
    m_player.playlist.pl.Mark(1);
    m_player.Set("Options", "SortListOnLoad", "True");
    EXPECT_THAT(Opened("/l/b.m3u"), ElementsAre("1. b", "2. z*"));
    EXPECT_EQ(m_player.Get("RTM", "TempDir2"), "/l/");
    EXPECT_EQ(m_files["/app/lists/list1.zvl"], m_player.Saved());
    EXPECT_EQ(m_player.manager.lstLists.Row(1),
              (controls::PlaylistEntry{"New playlist 1", "", "/app/lists/list1.zvl"}));
    EXPECT_THAT(Opened("/l/bad.zvl"), ElementsAre("1. b", "2. z*"));
    EXPECT_FALSE(m_files.contains("/app/lists/list2.zvl")) << "a bad header ends it at once";
    EXPECT_THAT(Opened("/l/notzvl"), ElementsAre("1. b", "2. z*"));
    EXPECT_TRUE(m_files.contains("/app/lists/list2.zvl")) << "another file does not";
    EXPECT_THROW(Opened("/l/gone.pls"), RunError);
    m_player.files.writesFail = true;
    Opened("/l/b.m3u");
    EXPECT_EQ(m_player.manager.lstLists.Count(), 3U) << "a failed copy still gets its row";
}

TEST_F(ListDialog, TheChosenFilterDecidesTheFormat)
{
    m_player.Fill({"1. a"});
    m_files["/l/old.zvl"] = "#ZVL20#My own title\r\nx\r\n1#y\r\n";
    m_files["/l/foreign.zvl"] = "foreign\r\n";
    const std::string zvl = "Velmo Player List Format (*.zvl)";
    const std::string entries = "a\r\n1#/m/1. a\r\n";
    SaveAs("/l/a.m3u", "PLS List Format (*.pls)");
    EXPECT_TRUE(m_files["/l/a.m3u.pls"].starts_with("[playlist]\r\nFile1=/m/1. a\r\n"));
    SaveAs("/l/b.M3U", "M3U List Format (*.m3u)");
    EXPECT_EQ(m_files["/l/b.M3U"], "#EXTM3U\r\n#EXTINF:1,a\r\n/m/1. a\r\n");
    SaveAs("/l/old", zvl);
    EXPECT_EQ(m_files["/l/old.zvl"], "#ZVL20#My own title\r\n" + entries);
    SaveAs("/l/foreign.zvl", zvl);
    EXPECT_EQ(m_files["/l/foreign.zvl"], "#ZVL20#Untitled playlist\r\n" + entries);
    EXPECT_EQ(m_player.Get("RTM", "TempDir1"), "/l/");
    EXPECT_EQ(m_player.dialogs.fileDialogs.back().title, "Save Playlist");
    m_player.files.writesFail = true;
    SaveAs("/k/c.zvl", zvl);
    EXPECT_FALSE(m_files.contains("/k/c.zvl")); // and no word of it
}

} // namespace
} // namespace velmo
