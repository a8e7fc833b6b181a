#include "windows/Playlist.h"

#include "playlist/ListFixture.h"
#include "support/FakeMainWindow.h"
#include "support/Mouse.h"

#include <gmock/gmock.h>

namespace velmo {
namespace {

using test::Click;
using test::Left;
using test::Right;
using ::testing::ElementsAre;

class PlaylistWindow : public ::testing::Test
{
protected:
    PlaylistWindow()
    {
        m_form.Show();
        m_rows.StartLabelEdit = [this] { m_done.emplace_back("edit"); };
        m_rows.SetFocus = [this] { m_done.emplace_back("focus"); };
        m_form.BeginDrag = [this] { m_done.emplace_back("drag"); };
        m_resources.Menu2.PopUpAtPointer = [this] { m_done.emplace_back("menu"); };
    }

    /// Rows "1. x" to "3. x" of playable files.
    void AddThreeSounds()
    {
        for (const char* path : {"/m/a.mp3", "/m/b.mp3", "/m/c.mp3"}) {
            m_player.AddSound(path, {.seconds = 10});
            m_rows.Add({std::to_string(m_rows.Count() + 1) + ". x", "00:10", path});
        }
    }

    void AddRows(int count)
    {
        for (int row = 0; row < count; ++row)
            m_rows.AddTexts({.Text = "x", .Length = "", .Path = "/m/x"});
        m_player.list.UpdateListScrollBar();
    }

    test::ListFixture m_player;
    forms::Playlist& m_form = m_player.playlist;
    controls::ListRows& m_rows = m_form.pl;
    test::FakeMainWindow m_main{m_player};
    forms::frmResources& m_resources = m_main.resources;
    forms::frmAddLocation m_locationForm;
    frmAddLocation m_location{m_locationForm, m_form, m_player.settings};
    TransportKeys m_keys{m_player.transport, m_main.mixerProgram, m_main.calls};
    PlaylistButtonModules m_buttons{
        m_player.list, m_player.ordering, m_player.addingDialogs, m_player.listDialogs, m_location};
    PlaylistCommandModules m_commands{
        m_player.list, m_player.tags, m_player.transport, m_keys, m_player.state};
    PlaylistForms m_forms{m_form, m_player.wmain, m_resources};
    PlaylistModules m_modules{m_main.neighbours, m_player.adding, m_buttons, m_commands};
    Playlist m_window{m_forms, m_modules, m_player.settings, m_player.files, "/app/"};
    std::vector<std::string> m_done;
};

TEST_F(PlaylistWindow, AWheelStepMovesTheViewByAsManyRowsAsTheSettingsSay)
{
    /// A step from the view whose top row is `from`: its top row afterwards; gives the bar's
    /// position.
    const auto expect = [&](const char* step, int delta, std::size_t from, std::size_t first) {
        if (from > 0)
            m_rows.EnsureVisible(1);
        if (from > 1)
            m_rows.EnsureVisible(from + m_rows.VisibleRows() - 1);
        m_player.Set("Options", "mwStep", step);
        m_window.Load();
        m_rows.MouseWheel(delta);
        EXPECT_EQ(m_rows.FirstVisibleEntry(), first) << "step " << step;
        return m_form.scBar.Position();
    };
    EXPECT_EQ(expect("3", 120, 0, 0), 1);
    AddRows(20);
    EXPECT_EQ(expect("3", -120, 1, 1), -11) << "all is in view: the bar only stores it";
    AddRows(80);
    EXPECT_EQ(expect("3", -120, 10, 13), 13);
    expect("-5", 0, 20, 21);
    expect("abc", 120, 10, 9);
    expect("2.9", 120, 10, 8);
    EXPECT_EQ(expect("9", -120, 65, 69), 69) << "the last row";
    expect("9", 120, 3, 1);
    AddRows(400);
    expect("300", -120, 10, 210);
}

TEST_F(PlaylistWindow, BarClicksAndKeysMoveTheViewAndWakeTheTitleReader)
{
    AddRows(100);
    const auto woken = [&] {
        const bool isAwake = m_form.tmrInfo.Enabled;
        m_form.tmrInfo.Enabled = false;
        return isAwake;
    };
    const auto firstAfter = [&](bool goesDown, int position) {
        m_form.scBar.Change(goesDown, position);
        EXPECT_TRUE(woken());
        return m_rows.FirstVisibleEntry();
    };
    EXPECT_EQ(firstAfter(true, 20), 20U);
    EXPECT_EQ(firstAfter(false, -5), 1U);
    EXPECT_EQ(firstAfter(true, 99), 1U) << "no such row";
    m_form.scBar.imgVBar.Click();
    EXPECT_THAT(m_done, ElementsAre("focus"));

    m_rows.EnsureVisible(60);
    for (const int key : {34, 40, 33, 38}) {
        m_form.scBar.SetPosition(3);
        m_rows.KeyDown(key);
        EXPECT_EQ(m_form.scBar.Position(), 29) << key;
    }
    woken();
    m_rows.EnsureVisible(1);
    m_rows.KeyDown(35);
    EXPECT_EQ(m_form.scBar.Position(), 29) << "not by every key";
    EXPECT_TRUE(woken()) << "but every key wakes";
    m_rows.Click();
    EXPECT_EQ(m_form.scBar.Position(), 1);
    EXPECT_TRUE(woken());
}

TEST_F(PlaylistWindow, FramesShowTheirButtonsUntilThePointerLeaves)
{
    m_form.imgOpen.MouseMove(Left);
    Click(m_form.imgOpen);
    EXPECT_TRUE(m_form.frameOpen.Visible && m_form.imgOpenMedia.Visible);
    EXPECT_FALSE(m_form.imgOrderAZ.Visible);
    m_form.imgOpenList.MouseMove(Left);
    EXPECT_EQ(m_form.imgOpenList.Picture.Get().index, 12);
    // Straight from within the frame the button shows it again, with its buttons at rest.
    Click(m_form.imgOpen);
    EXPECT_TRUE(m_form.frameOpen.Visible);
    EXPECT_EQ(m_form.imgOpenList.Picture.Get().index, 10);
    m_form.imgOrder.MouseMove(Left);
    EXPECT_TRUE(m_form.frameOpen.Visible);
    Click(m_form.imgOpen);
    EXPECT_FALSE(m_form.frameOpen.Visible) << "toggled";

    for (const auto* leave : {&m_form.imgClear.MouseMove,
                              &m_form.imgSave.MouseMove,
                              &m_form.pl.MouseMove,
                              &m_form.MouseMove}) {
        m_form.maincapclose.MouseMove(Left);
        Click(m_form.imgOrder);
        ASSERT_TRUE(m_form.imgOrderAZ.Visible);
        (*leave)(Left);
        EXPECT_FALSE(m_form.frameOrder.Visible || m_form.imgOrderAZ.Visible);
    }
    EXPECT_EQ(m_form.maincapclose.Picture.Get().index, 1);
}

TEST_F(PlaylistWindow, ButtonsActOnTheirReleaseAndSaveTheList)
{
    m_player.Fill({"1. b", "2. a"});
    m_form.imgClear.MouseUp(Right);
    EXPECT_EQ(m_rows.Count(), 2U);
    Click(m_form.imgOrder);
    Click(m_form.imgOrderAZ);
    EXPECT_FALSE(m_form.frameOrder.Visible);
    EXPECT_EQ(m_rows.Row(1).Text, "1. a");
    Click(m_form.imgOrderZA);
    EXPECT_EQ(m_rows.Row(1).Text, "1. b");
    Click(m_form.imgSave);
    Click(m_form.imgOpenMedia);
    EXPECT_EQ(m_player.dialogs.fileDialogs.size(), 2U);
    m_player.files.files.erase("/app/list.zvl");
    Click(m_form.imgOpenDirectory);
    EXPECT_EQ(m_player.dialogs.folderTitles.size(), 1U);
    EXPECT_NE(m_player.Saved(), "") << "saved although nothing was chosen";
    Click(m_form.imgOpenLocation);
    EXPECT_TRUE(m_locationForm.Visible);
    m_form.tmrInfo.Enabled = true;
    Click(m_form.imgClear);
    EXPECT_EQ(m_rows.Count(), 0U);
    EXPECT_FALSE(m_form.tmrInfo.Enabled);
    EXPECT_EQ(m_player.Saved(), "#ZVL20#Internal playlist\r\n");
}

TEST_F(PlaylistWindow, TheCloseImageKeepsItsPressAndHidesOnItsRelease)
{
    m_resources.submnuShowPlaylist.Checked = true;
    m_form.maincapclose.MouseDown(Left);
    EXPECT_EQ(m_player.Get("RTM", "ShowPL"), "False");
    EXPECT_FALSE(m_resources.submnuShowPlaylist.Checked);
    m_form.maincapclose.MouseUp(test::LeftAt(196, 0));
    EXPECT_TRUE(m_form.Visible) << "released beside it";
    m_player.files.SetCurrentDirectory("/elsewhere");
    m_form.maincapclose.MouseUp(Left);
    EXPECT_FALSE(m_form.Visible);
    EXPECT_EQ(m_player.files.CurrentDirectory(), "/app/");
    EXPECT_NE(m_player.Saved(), "");
    // The window manager asks for the same.
    m_form.Show();
    m_player.Set("RTM", "ShowPL", "True");
    m_form.QueryClose();
    EXPECT_FALSE(m_form.Visible);
    EXPECT_EQ(m_player.Get("RTM", "ShowPL"), "False");
    m_form.MouseDown(Right);
    m_form.MouseDown(Left);
    EXPECT_THAT(m_done, ElementsAre("drag"));
}

TEST_F(PlaylistWindow, OneOfClickAndDoubleClickPlaysTheSelectedEntry)
{
    m_rows.MouseUp(Left); // nothing is selected: passed over
    m_rows.DblClick();
    AddThreeSounds();
    const auto expect = [&](const char* setting, const char* onRelease, const char* onDoubleClick) {
        m_player.Set("Options", "PlayOnSingleClick", setting);
        m_rows.Mark(2);
        m_player.state.CurrentFile.clear();
        m_rows.MouseUp(Right);
        m_rows.MouseUp(Left);
        EXPECT_EQ(m_player.state.CurrentFile, onRelease) << setting;
        m_player.state.CurrentFile.clear();
        m_rows.DblClick();
        EXPECT_EQ(m_player.state.CurrentFile, onDoubleClick) << setting;
    };
    expect("", "", "/m/b.mp3");
    expect("TRUE", "/m/b.mp3", "");
    expect("no", "", "");
    EXPECT_THAT(m_done, ElementsAre("menu", "menu", "menu"));
}

TEST_F(PlaylistWindow, LettersStepThroughTheRowsWhateverIsSeenOfTheWindow)
{
    m_player.wmain.tmrBASS.Enabled = true;
    m_form.KeyPress(U'n');
    EXPECT_FALSE(m_player.wmain.tmrBASS.Enabled) << "an empty list only stops the monitor";
    AddThreeSounds();
    m_rows.Mark(2);
    m_form.Hide();
    std::string played;
    for (const char32_t key : std::u32string_view(U"nNbB")) {
        m_player.state.AdvanceRequested = true;
        m_form.KeyPress(key);
        played += m_player.state.CurrentFile.substr(3, 1);
        EXPECT_FALSE(m_player.state.AdvanceRequested);
    }
    EXPECT_EQ(played, "cacb");
    EXPECT_THAT(m_player.Texts(), ElementsAre("1. x", "2. x*", "3. x"));
}

TEST_F(PlaylistWindow, TheMenuActsOnTheEntries)
{
    EXPECT_NO_THROW(m_resources.submnuPlay.Click());
    EXPECT_THROW(m_resources.submnuReloadtag.Click(), std::out_of_range);
    AddThreeSounds();
    m_rows.Mark(2);
    m_player.state.AdvanceRequested = true;
    m_resources.submnuPlay.Click();
    EXPECT_EQ(m_player.state.CurrentFile, "/m/b.mp3");
    EXPECT_FALSE(m_player.state.AdvanceRequested);
    m_player.tagLibrary.formatTags["/m/b.mp3 %TITL"] = "New";
    m_player.Set("Options", "ReadTitlesOn", "load");
    const std::string saved = m_player.Saved();
    m_resources.submnuReloadtag.Click();
    EXPECT_EQ(m_rows.Row(2), (controls::PlaylistEntry{"2. New", "00:10", "/m/b.mp3"}));
    m_player.Set("Display", "ShowNumbersInPL", "False");
    m_resources.submnuReloadtag.Click();
    EXPECT_EQ(m_rows.Row(2).Text, "New");
    m_resources.submnuEditEntry.Click();
    m_rows.AfterLabelEdit(2, "Mine");
    EXPECT_EQ(m_player.Saved(), saved) << "neither is saved";
    m_player.random.numbers = {0.9F};
    m_resources.submnuPlayRandom.Click();
    EXPECT_EQ(m_player.state.CurrentFile, "/m/c.mp3");
    m_resources.submnuDeleteSelected.Click();
    EXPECT_THAT(m_player.Texts(), ElementsAre("x", "Mine"));
    m_rows.Mark(1);
    m_rows.KeyDown(46);
    m_rows.OLEDragDrop({"/m/a.mp3"});
    EXPECT_THAT(m_player.Texts(), ElementsAre("Mine*", "a"));
    EXPECT_THAT(m_done, ElementsAre("edit"));
}

} // namespace
} // namespace velmo
