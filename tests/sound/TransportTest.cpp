#include "SoundFixture.h"

#include "sound/TransportKeys.h"
#include "support/FakeMainWindow.h"

namespace velmo {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr controls::MouseEvent Left{.button = controls::MouseButton::Left};
constexpr controls::MouseEvent Right{.button = controls::MouseButton::Right};

class Controls : public SoundTest
{
protected:
    Controls()
    {
        for (const char* path : {"/m/a.mp3", "/m/b.mp3", "/m/c.mp3"})
            AddRow(path, 100);
        m_rows.Mark(1);
    }

    /// Plays a, and b beside it.
    void PlayTwo()
    {
        m_player.tracks.PlayTrack("/m/a.mp3");
        m_player.tracks.LoadNextChannel("/m/b.mp3");
        m_player.table.BASS_ChannelPlay(m_state.NextChannel, 1);
    }
};

TEST_F(Controls, PlayStartsTheSelectedEntryAnewAndResumesNoPause)
{
    m_transport.imgPlay_MouseUp(Right);
    EXPECT_THAT(m_player.bass.calls, IsEmpty());
    m_rows.Mark(2);
    m_transport.imgPlay_MouseUp(Left);
    m_transport.imgPause_MouseUp(Left);
    m_transport.imgPlay_MouseUp(Left);
    EXPECT_THAT(Sounding(), ElementsAre("/m/b.mp3"));
    EXPECT_TRUE(m_state.PausedFlag);
    EXPECT_THAT(m_player.status.told, ElementsAre("playing /m/b.mp3", "playing /m/b.mp3"));
}

TEST_F(Controls, WithHiddenPlaylistNothingStarts)
{
    m_player.tracks.PlayTrack("/m/b.mp3");
    m_player.playlist.Hide();
    m_player.bass.calls.clear();
    const auto expect = [&](const auto& press, bool monitorGoesOn) {
        m_wmain.tmrBASS.Enabled = true;
        m_wmain.imgPositionTicker.Left = 1000;
        press();
        EXPECT_EQ(m_wmain.imgPositionTicker.Left, m_wmain.imgPositionBar.Left);
        EXPECT_EQ(m_wmain.tmrBASS.Enabled, monitorGoesOn);
    };
    expect([&] { m_transport.imgPlay_MouseUp(Left); }, true);
    // Next and back stop it all the same.
    expect([&] { m_transport.imgNext_MouseUp(Left); }, false);
    expect([&] { m_transport.imgBack_MouseUp(Left); }, false);
    EXPECT_THAT(m_player.bass.calls, IsEmpty());
}

TEST_F(Controls, PlayOnAnEmptyListAsksForAFileThatJoinsNoList)
{
    m_rows.Clear();
    m_state.AdvanceRequested = true;
    m_player.Set("RTM", "TempDir3", "/music");
    m_transport.imgPlay_MouseUp(Left);
    EXPECT_FALSE(m_state.AdvanceRequested);
    const ports::FileDialog asked = m_player.dialogs.fileDialogs.at(0);
    EXPECT_EQ(asked.title + asked.folder, "Open And Play/music");
    EXPECT_TRUE(asked.filter.starts_with("All Known Audio Files|*.wav;*.aif;"));
    EXPECT_THAT(m_player.bass.calls, IsEmpty()) << "cancelled";

    m_player.Set("Options", "ReadTitlesOn", "play");
    m_rows.Add({.Text = "untouched", .Length = "", .Path = "/m/c.mp3"});
    m_player.dialogs.choice = {.paths = {"/m/a.mp3"}, .label = ""};
    m_transport.imgOpen_MouseUp(Left);
    EXPECT_THAT(Sounding(), ElementsAre("/m/a.mp3"));
    EXPECT_TRUE(m_wmain.tmrBASS.Enabled);
    EXPECT_EQ(m_rows.Row(m_rows.Count()).Text, "untouched");
    EXPECT_EQ(m_player.Get("RTM", "TempDir3"), "/m/");
}

TEST_F(Controls, PauseHoldsBothChannelsAndTheSecondPressGoesOnWithBoth)
{
    m_transport.imgPause_MouseUp(Left);
    EXPECT_FALSE(m_state.PausedFlag) << "nothing is open";
    PlayTwo();
    m_wmain.lblTime.Caption = "00:42";
    const auto expect = [&](const char* time, const std::vector<std::string>& sounding) {
        m_transport.imgPause_MouseUp(Left);
        EXPECT_EQ(m_wmain.lblTime.Caption.Get(), time);
        EXPECT_EQ(Sounding(), sounding);
        EXPECT_EQ(m_wmain.tmrBASS.Enabled, !sounding.empty());
    };
    expect("Paused", {});
    expect("00:42", {"/m/a.mp3", "/m/b.mp3"});

    // The flag outlives Stop and Play: the next press takes the branch that resumes.
    m_transport.imgPause_MouseUp(Left);
    m_transport.imgStop_MouseUp(Left);
    m_transport.imgPlay_MouseUp(Left);
    expect("00:42", {"/m/a.mp3"});
    expect("Paused", {});
}

TEST_F(Controls, StopFreesBothChannelsAndKeepsTheHandles)
{
    PlayTwo();
    m_state.AdvanceRequested = true;
    m_player.bass.calls.clear();
    m_transport.imgStop_MouseUp(Left);
    EXPECT_EQ(
        m_player.bass.TakeCalls(),
        "BASS_ChannelStop 101; BASS_StreamFree 101; BASS_ChannelStop 103; BASS_StreamFree 103");
    EXPECT_EQ(m_state.CurrentChannel, 101U);
    EXPECT_TRUE(m_state.AdvanceRequested);
    EXPECT_EQ(m_wmain.lblTime.Caption.Get(), "00:00");
    EXPECT_EQ(m_wmain.lblSongName.Caption.Get(), "Velmo Player - Made to be heared!    ***  ");
    EXPECT_EQ(m_player.status.told.back(), "stopped");
}

/// What each key reaches; only "r" depends on the window.
TEST_F(Controls, EveryKeyHasItsCommand)
{
    test::FakeMixerProgram mixer;
    KeyCalls calls;
    TransportKeys keys(m_transport, mixer, calls);
    std::u32string called;
    const std::pair<char32_t, std::function<void()>*> callOf[] = {
        {U'f', &calls.ShowFinder    },
        {U'H', &calls.ShowShutDown  },
        {U'k', &calls.ShowAbout     },
        {U'd', &calls.ShowDj        },
        {U'i', &calls.ShowSinfo     },
        {U'a', &calls.AddFilesDialog},
        {U'l', &calls.OpenListDialog},
        {U's', &calls.SaveListDialog},
        {U'r', &calls.RestartCore   },
        {U'x', &calls.ExitProgram   },
    };
    for (const auto& [key, call] : callOf) {
        keys.KeyPress(TransportKeys::Window::Main, key); // such a window may not exist
        *call = [&called, key = key] { called += key; };
        keys.KeyPress(TransportKeys::Window::Main, key);
    }
    EXPECT_EQ(called, U"fHkdialsrx");

    const auto press = [&](char32_t key) { keys.KeyPress(TransportKeys::Window::Other, key); };
    calls.RestartCore = [] { ADD_FAILURE() << "the main window's alone"; };
    m_state.AdvanceRequested = true;
    m_player.random.numbers = {0.1F, 0.6F};
    EXPECT_THROW(press(U'R'), std::out_of_range) << "the pick 0";
    EXPECT_TRUE(m_state.AdvanceRequested);
    EXPECT_FALSE(m_rows.IsMarked(1));
    EXPECT_THAT(m_player.bass.calls, IsEmpty());
    const auto plays = [&](char32_t key) {
        press(key);
        EXPECT_THAT(Sounding(), ElementsAre(m_rows.Row(m_rows.SelectedEntry()).Path));
        return m_state.CurrentFile;
    };
    EXPECT_EQ(plays(U'R'), "/m/b.mp3");
    EXPECT_FALSE(m_state.AdvanceRequested);
    EXPECT_EQ(plays(U'n'), "/m/c.mp3");
    EXPECT_EQ(plays(U'n'), "/m/a.mp3");
    EXPECT_EQ(plays(U'b'), "/m/c.mp3");
    EXPECT_EQ(plays(U'b'), "/m/b.mp3");
    EXPECT_FALSE(m_rows.IsMarked(3)) << "only the new row is marked";
    press(U'p');
    EXPECT_TRUE(m_state.PausedFlag);
    press(U'e');
    EXPECT_EQ(m_wmain.lblTime.Caption.Get(), "00:00");
    m_player.bass.volume = 0.7F;
    for (const int saved : {1, 0}) { // rounded
        press(U'm');
        EXPECT_EQ(m_player.bass.volume, 0);
        EXPECT_EQ(m_state.MuteSavedVolume, saved);
    }
    press(U'o');
    EXPECT_EQ(m_player.dialogs.fileDialogs.size(), 1U);
    press(U'v');
    EXPECT_EQ(mixer.started, 1);
    m_state.AdvanceRequested = true;
    m_rows.Mark(3);
    EXPECT_EQ(plays(U'\r'), "/m/c.mp3");
    EXPECT_TRUE(m_state.AdvanceRequested) << "Enter doesn't touch it";
    m_rows.Clear();
    press(U'r');
    EXPECT_EQ(m_player.random.seeds.size(), 2U) << "not for an empty list";
    EXPECT_THROW(press(U'\r'), std::out_of_range);
    EXPECT_FALSE(m_wmain.tmrBASS.Enabled);
}

} // namespace
} // namespace velmo
