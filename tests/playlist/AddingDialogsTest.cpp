#include "ListFixture.h"

#include <gmock/gmock.h>

namespace velmo {
namespace {

using ::testing::ElementsAre;

class AddingDialog : public ::testing::Test
{
protected:
    AddingDialog()
    {
        for (const char* path : {"/m/b.mp3", "/m/_.txt", "/m/s/_a.ogg"})
            m_player.files.files[path] = "";
        m_player.Fill({"1. old"});
    }

    test::ListFixture m_player;
};

TEST_F(AddingDialog, ChosenFilesAreAddedWhateverTheyAre)
{
    m_player.addingDialogs.AddFilesDialog();
    EXPECT_EQ(m_player.playlist.pl.Count(), 1U) << "cancelled";
    const ports::FileDialog asked = m_player.dialogs.fileDialogs.back();
    EXPECT_EQ(asked.kind, ports::FileDialogKind::OpenMany);
    EXPECT_EQ(asked.title, "Open Media");
    EXPECT_EQ(asked.folder, "c:\\");
    EXPECT_EQ(asked.filter, m_player.mediaFilter.OpenMediaFilter());
    m_player.Set("Options", "ConvertUnderscore", "True");
    m_player.Set("Options", "ReadTitlesOn", "display");
    m_player.dialogs.choice.paths = {"/m/s/_a.ogg", "/m/_.txt"};
    m_player.addingDialogs.AddFilesDialog();
    EXPECT_THAT(m_player.Texts(), ElementsAre("1. old", "2.  a", "3.  "));
    EXPECT_EQ(m_player.list.TitleReadCursor, 1);
    EXPECT_TRUE(m_player.playlist.tmrInfo.Enabled);
    EXPECT_FALSE(m_player.files.files.contains("/app/list.zvl")) << "the reader's pass saves";
    EXPECT_EQ(m_player.Get("RTM", "TempDir1"), "/m/");
    m_player.Set("Options", "ReadTitlesOn", "play");
    m_player.Set("Options", "SortListOnLoad", "True");
    m_player.dialogs.choice.paths = {"/m/b.mp3"};
    m_player.addingDialogs.AddFilesDialog();
    EXPECT_THAT(m_player.Texts(), ElementsAre("1.  ", "2.  a", "3. b", "4. old*"));
    EXPECT_THAT(m_player.Saved(), ::testing::HasSubstr("b\r\n0#/m/b.mp3\r\n"));
}

TEST_F(AddingDialog, AFolderGivesItsKnownFiles)
{
    m_player.addingDialogs.AddDirectoryDialog();
    EXPECT_THAT(m_player.dialogs.folderTitles, ElementsAre("Select Dir"));
    m_player.dialogs.folder = "/m";
    m_player.addingDialogs.AddDirectoryDialog();
    EXPECT_THAT(m_player.Texts(), ElementsAre("1. old", "2. b", "3. _a"));
    EXPECT_EQ(m_player.list.TitleReadCursor, 1);
    m_player.Set("Options", "RecureLocation", "False");
    m_player.addingDialogs.AddDirectoryDialog();
    EXPECT_THAT(m_player.Texts(), ElementsAre("1. old", "2. b", "3. _a", "4. b"));
    EXPECT_EQ(m_player.list.TitleReadCursor, 3);
}

} // namespace
} // namespace velmo
