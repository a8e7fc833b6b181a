#include "ListFixture.h"

#include "playlist/frmAddLocation.h"

#include <gmock/gmock.h>

namespace velmo {
namespace {

using ::testing::ElementsAre;

class Doors : public ::testing::Test
{
protected:
    Doors()
    {
        for (const char* path : {"/m/a_b.mp3", "/m/notes.txt", "/m/sub/cd.XM", "/m/d.wave.wav"})
            m_player.files.files[path] = "";
        m_player.files.directories = {"/m", "/my.m3u"};
    }

    void AddFiles(const std::vector<std::string>& paths)
    {
        m_player.dialogs.choice.paths = paths;
        m_player.addingDialogs.AddFilesDialog();
    }

    test::ListFixture m_player;
    controls::Timer& m_timer = m_player.playlist.tmrInfo;
};

TEST_F(Doors, PathsOfKnownKindsJoinTheEndAndRowOneIsMarked)
{
    m_player.adding.AddPath("/m/notes.txt");
    EXPECT_FALSE(m_timer.Enabled) << "nothing was added";
    EXPECT_EQ(m_player.Saved(), "#ZVL20#Internal playlist\r\n");
    m_player.Set("Options", "ReadTitlesOn", "play");
    m_player.adding.AddPath("/m/d.wave.wav");
    EXPECT_FALSE(m_timer.Enabled) << "the reader belongs to mode display";
    m_player.Set("Options", "ReadTitlesOn", "Display");
    m_player.adding.AddPath("/m/a_b.mp3");
    EXPECT_TRUE(m_timer.Enabled);
    EXPECT_EQ(m_player.list.TitleReadCursor, 1);
    m_player.Set("Options", "ConvertUnderscore", "True");
    m_player.adding.AddPath("/m");
    EXPECT_EQ(m_player.list.TitleReadCursor, 2);
    m_player.Set("Options", "RecureLocation", "False");
    m_player.Set("Display", "ShowNumbersInPL", "False");
    m_player.adding.AddPath("/m");
    EXPECT_THAT(
        m_player.Texts(),
        ElementsAre("1. d.wave*", "2. a_b", "3. a b", "4. d.wave", "5. c", "a b", "d.wave"));
    EXPECT_THAT(m_player.Saved(), ::testing::EndsWith("\r\nd.wave\r\n0#/m/d.wave.wav\r\n"));
    EXPECT_EQ(m_player.playlist.scBar.Max, 7 - 31);
    EXPECT_THROW(m_player.adding.AddPath("/gone.mp3"), RunError);
    EXPECT_THROW(m_player.adding.AddPath("http://radio/"), RunError);
    m_player.adding.AddPath("D:"); // a drive without a map holds nothing
}

TEST_F(Doors, WhatAFolderGivesGoesByTheExtensionsOfTheLastCaller)
{
    m_player.mediaFilter.KnownExtensions = {"txt"};
    m_player.adding.AddPath("/m");
    EXPECT_THAT(m_player.Texts(), ElementsAre("1. notes*"));
}

TEST_F(Doors, ListsAreReadByTheirLastThreeCharacters)
{
    m_player.files.files = {
        {"/l/x.ZVL",   "#ZVL20#\r\na_b\r\n61#/m/a\r\n"                     },
        {"/l/m3u",     "#EXTM3U\n#EXTINF:61,b\nb\n"                        },
        {"/l/x.pls",   "[playlist]\nFile1=c\nTitle1=c\nNumberOfEntries=1\n"},
        {"/l/bad.pls", "File1=c\nNumberOfEntries=1\n"                      },
        {"/l/odd.zvl", "#ZVL20#\r\nd\r\n1#/m/d\r\ne"                       },
    };
    m_player.Set("Options", "ConvertUnderscore", "True");
    for (const char* path : {"/l/x.ZVL", "/l/m3u", "/l/x.pls"})
        m_player.adding.AddPath(path);
    EXPECT_THAT(m_player.Texts(), ElementsAre("1. a_b*", "2. b", "3. c"));
    EXPECT_FALSE(m_timer.Enabled);
    m_player.playlist.pl.DeselectAll();
    const std::string saved = m_player.Saved();
    m_player.adding.AddPath("/l/bad.pls");
    EXPECT_THROW(m_player.adding.AddPath("/l/odd.zvl"), RunError);
    EXPECT_THROW(m_player.adding.AddPath("/my.m3u"), RunError) << "a folder of that name";
    EXPECT_THAT(m_player.Texts(), ElementsAre("1. a_b", "2. b", "3. c", "4. d", "5. e"));
    EXPECT_EQ(m_player.Saved(), saved);
}

TEST_F(Doors, ModeLoadOpensFilesAndLengthsMayStayAway)
{
    m_player.AddSound("/m/a_b.mp3", {.seconds = 61});
    m_player.tagLibrary.formatTags["/m/a_b.mp3 %TITL"] = "T_1";
    m_player.SetAll("Options", "ReadTitlesOn=LOAD|ConvertUnderscore=True");
    m_player.adding.AddPath("/m/a_b.mp3");
    m_player.adding.AddPath("/m/d.wave.wav"); // can't be opened
    m_player.Set("Options", "ShowLengthInPL", "False");
    m_player.adding.AddPath("/m");
    EXPECT_THAT(m_player.Texts(), ElementsAre("1. T 1*", "2. ", "3. T 1", "4. d.wave", "5. c"));
    EXPECT_EQ(m_player.playlist.pl.Row(1).Length, "01:01");
    EXPECT_EQ(m_player.playlist.pl.Row(3).Length, "");
}

TEST_F(Doors, AHandedOverFileReplacesTheListOnlyIfTheSettingsSaySo)
{
    m_player.files.files["/app/list.zvl"] = "#ZVL20#Mine\r\nz\r\n1#/gone\r\n";
    m_player.adding.AddPath(""); // brings the internal list back
    EXPECT_THAT(m_player.Texts(), ElementsAre("1. z*"));
    EXPECT_EQ(m_player.Saved(), "#ZVL20#Internal playlist\r\nz\r\n1#/gone\r\n");
    m_player.Set("Options", "SortListOnLoad", "True");
    for (const char* path : {"/m/d.wave.wav", "/m/a_b.mp3", ""})
        m_player.adding.EnqueueFromCommandLine(path);
    EXPECT_THAT(m_player.Texts(), ElementsAre("1. a_b", "2. d.wave*", "3. z"));
    m_player.Set("Files", "EnqueueAsDefaultAction", "FALSE");
    m_player.adding.EnqueueFromCommandLine("/m/sub/cd.XM");
    EXPECT_THAT(m_player.Texts(), ElementsAre("1. c*"));
}

TEST_F(Doors, ADropGoesOnBehindWhatCannotBeAdded)
{
    m_player.Fill({"1. old"});
    m_player.adding.pl_Drop({"/gone.mp3", "", "/m/a_b.mp3", "/my.m3u", "/m/sub/cd.XM"});
    EXPECT_THAT(m_player.Texts(), ElementsAre("1. old*", "2. a_b", "3. c"));
    EXPECT_EQ(m_player.list.TitleReadCursor, 1) << "the first new row is the next one";
    m_player.SetAll("Options", "ReadTitlesOn=play|SortListOnLoad=true");
    m_player.adding.pl_Drop({});
    EXPECT_THAT(m_player.Texts(), ElementsAre("1. a_b", "2. c", "3. old*"));
}

TEST_F(Doors, ALocationIsTakenAsTypedAndAlwaysNumbered)
{
    forms::frmAddLocation form;
    frmAddLocation location(form, m_player.playlist, m_player.settings);
    m_player.Set("Display", "ShowNumbersInPL", "False");
    location.Open();
    form.txtLocation.Text = std::string("http://radio/");
    form.txtName.Text = std::string("Radio");
    location.btnCancel_Click();
    location.Open();
    form.txtLocation.Text = std::string("http://other/");
    location.btnAdd_Click();
    EXPECT_FALSE(form.Visible);
    EXPECT_EQ(m_player.playlist.pl.Row(1), (controls::PlaylistEntry{"1. ", "", "http://other/"}));
    EXPECT_FALSE(m_player.files.files.contains("/app/list.zvl"));
}

TEST_F(Doors, FilesOfTheDialogAreAddedWhateverTheyAre)
{
    m_player.Fill({"1. old"});
    AddFiles({});
    EXPECT_EQ(m_player.playlist.pl.Count(), 1U) << "cancelled";
    const ports::FileDialog asked = m_player.dialogs.fileDialogs.back();
    EXPECT_EQ(asked.kind, ports::FileDialogKind::OpenMany);
    EXPECT_EQ(asked.title + " in " + asked.folder, "Open Media in c:\\");
    EXPECT_EQ(asked.filter, m_player.mediaFilter.OpenMediaFilter());
    m_player.Set("Options", "ConvertUnderscore", "True");
    AddFiles({"/m/sub/cd.XM", "/m/a_b.mp3", "/m/notes.txt"});
    EXPECT_THAT(m_player.Texts(), ElementsAre("1. old", "2. c", "3. a b", "4. notes"));
    EXPECT_EQ(m_player.list.TitleReadCursor, 1);
    EXPECT_TRUE(m_timer.Enabled);
    EXPECT_FALSE(m_player.files.files.contains("/app/list.zvl")) << "the reader's pass saves";
    EXPECT_EQ(m_player.Get("RTM", "TempDir1"), "/m/");
    m_player.SetAll("Options", "ReadTitlesOn=play|SortListOnLoad=True");
    AddFiles({"/m/d.wave.wav"});
    EXPECT_THAT(m_player.Texts(),
                ElementsAre("1. a b", "2. c", "3. d.wave", "4. notes", "5. old*"));
    EXPECT_THAT(m_player.Saved(), ::testing::HasSubstr("d.wave\r\n0#/m/d.wave.wav\r\n"));
}

TEST_F(Doors, AFolderOfTheDialogGivesItsKnownFiles)
{
    m_player.addingDialogs.AddDirectoryDialog();
    EXPECT_THAT(m_player.dialogs.folderTitles, ElementsAre("Select Dir"));
    m_player.dialogs.folder = "/m";
    m_player.addingDialogs.AddDirectoryDialog();
    EXPECT_THAT(m_player.Texts(), ElementsAre("1. a_b", "2. d.wave", "3. c"));
    m_player.Set("Options", "RecureLocation", "False");
    m_player.addingDialogs.AddDirectoryDialog();
    EXPECT_EQ(m_player.playlist.pl.Count(), 5U);
}

} // namespace
} // namespace velmo
