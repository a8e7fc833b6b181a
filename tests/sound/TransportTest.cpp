#include "sound/TransportKeys.h"
#include "support/FakePlayer.h"

#include <gmock/gmock.h>

namespace velmo {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr controls::MouseEvent Left{.button = controls::MouseButton::Left};
constexpr controls::MouseEvent Right{.button = controls::MouseButton::Right};

class Controls : public ::testing::Test
{
protected:
    Controls()
    {
        m_player.playlist.Show();
        for (const char* path : {"/m/a.mp3", "/m/b.mp3", "/m/c.mp3"}) {
            m_player.AddSound(path, {.seconds = 100});
            m_rows.Add({.Text = path, .Length = "01:40", .Path = path});
        }
        m_rows.Mark(1);
    }

    DWORD StateOf(DWORD channel) const { return m_player.table.BASS_ChannelIsActive(channel); }

    test::FakePlayer m_player;
    forms::wmain& m_wmain = m_player.wmain;
    controls::ListRows& m_rows = m_player.playlist.pl;
    Transport& m_transport = m_player.transport;
    TransportState& m_state = m_player.state;
};

TEST_F(Controls, PlayStartsTheSelectedEntryAnewAndResumesNoPause)
{
    m_transport.imgPlay_MouseUp(Right);
    EXPECT_THAT(m_player.bass.calls, IsEmpty());
    m_rows.Mark(2);
    m_transport.imgPlay_MouseUp(Left);
    m_transport.imgPause_MouseUp(Left);
    m_transport.imgPlay_MouseUp(Left);
    EXPECT_EQ(m_state.CurrentFile, "/m/b.mp3");
    EXPECT_EQ(StateOf(m_state.CurrentChannel), BASS_ACTIVE_PLAYING);
    EXPECT_TRUE(m_state.PausedFlag);
    EXPECT_THAT(m_player.status.told, ElementsAre("playing /m/b.mp3", "playing /m/b.mp3"));
}

TEST_F(Controls, WithHiddenPlaylistNothingStarts)
{
    m_player.tracks.PlayTrack("/m/b.mp3");
    m_player.playlist.Hide();
    m_player.bass.calls.clear();
    struct Case
    {
        void (*press)(Transport&);
        bool monitorGoesOn; ///< next and back stop it all the same
    };
    const Case cases[] = {
        {[](Transport& transport) { transport.imgPlay_MouseUp(Left); }, true },
        {[](Transport& transport) { transport.imgNext_MouseUp(Left); }, false},
        {[](Transport& transport) { transport.imgBack_MouseUp(Left); }, false},
    };
    for (const Case& c : cases) {
        m_wmain.tmrBASS.Enabled = true;
        m_wmain.imgPositionTicker.Left = 1000;
        c.press(m_transport);
        EXPECT_EQ(m_wmain.imgPositionTicker.Left, m_wmain.imgPositionBar.Left);
        EXPECT_EQ(m_wmain.tmrBASS.Enabled, c.monitorGoesOn);
    }
    EXPECT_THAT(m_player.bass.calls, IsEmpty());
}

TEST_F(Controls, PlayOnAnEmptyListAsksForAFileThatJoinsNoList)
{
    m_rows.Clear();
    m_state.AdvanceRequested = true;
    m_player.settings.WriteSetting("RTM", "TempDir3", "/music");
    m_transport.imgPlay_MouseUp(Left);
    EXPECT_FALSE(m_state.AdvanceRequested);
    ASSERT_EQ(m_player.dialogs.fileDialogs.size(), 1U);
    EXPECT_EQ(m_player.dialogs.fileDialogs[0].title, "Open And Play");
    EXPECT_EQ(m_player.dialogs.fileDialogs[0].folder, "/music");
    EXPECT_THAT(m_player.dialogs.fileDialogs[0].filter,
                ::testing::StartsWith("All Known Audio Files|*.wav;*.aif;"));
    EXPECT_THAT(m_player.bass.calls, IsEmpty()) << "cancelled";

    m_player.settings.WriteSetting("Options", "ReadTitlesOn", "play");
    m_rows.Add({.Text = "untouched", .Length = "", .Path = "/m/c.mp3"});
    m_player.dialogs.choice = {.paths = {"/m/a.mp3"}, .label = ""};
    m_transport.imgOpen_MouseUp(Left);
    EXPECT_EQ(m_state.CurrentFile, "/m/a.mp3");
    EXPECT_TRUE(m_wmain.tmrBASS.Enabled);
    EXPECT_EQ(m_rows.Count(), 1U);
    EXPECT_EQ(m_rows.Row(1).Text, "untouched");
    EXPECT_EQ(m_player.settings.ReadSetting("RTM", "TempDir3", ""), "/m/");
}

TEST_F(Controls, PauseHoldsBothChannelsAndTheSecondPressGoesOnWithBoth)
{
    m_transport.imgPause_MouseUp(Left);
    EXPECT_FALSE(m_state.PausedFlag) << "nothing is open";
    m_player.tracks.PlayTrack("/m/a.mp3");
    m_player.tracks.LoadNextChannel("/m/b.mp3");
    m_player.table.BASS_ChannelPlay(m_state.NextChannel, 1);
    m_wmain.lblTime.Caption = "00:42";
    m_transport.imgPause_MouseUp(Left);
    EXPECT_EQ(m_wmain.lblTime.Caption.Get(), "Paused");
    EXPECT_EQ(StateOf(m_state.CurrentChannel), BASS_ACTIVE_PAUSED);
    EXPECT_EQ(StateOf(m_state.NextChannel), BASS_ACTIVE_PAUSED);
    EXPECT_FALSE(m_wmain.tmrBASS.Enabled);
    m_transport.imgPause_MouseUp(Left);
    EXPECT_EQ(m_wmain.lblTime.Caption.Get(), "00:42");
    EXPECT_EQ(StateOf(m_state.CurrentChannel), BASS_ACTIVE_PLAYING);
    EXPECT_EQ(StateOf(m_state.NextChannel), BASS_ACTIVE_PLAYING);
    EXPECT_TRUE(m_wmain.tmrBASS.Enabled);

    // The flag outlives Stop and Play: the next press takes the branch that resumes.
    m_transport.imgPause_MouseUp(Left);
    m_transport.imgStop_MouseUp(Left);
    m_transport.imgPlay_MouseUp(Left);
    m_transport.imgPause_MouseUp(Left);
    EXPECT_EQ(StateOf(m_state.CurrentChannel), BASS_ACTIVE_PLAYING);
    m_transport.imgPause_MouseUp(Left);
    EXPECT_EQ(StateOf(m_state.CurrentChannel), BASS_ACTIVE_PAUSED);
}

TEST_F(Controls, StopFreesBothChannelsAndKeepsTheHandles)
{
    m_player.tracks.PlayTrack("/m/a.mp3");
    m_player.tracks.LoadNextChannel("/m/b.mp3");
    const DWORD current = m_state.CurrentChannel;
    const DWORD next = m_state.NextChannel;
    m_state.AdvanceRequested = true;
    m_player.bass.calls.clear();
    m_transport.imgStop_MouseUp(Left);
    const auto call = [](const char* name, DWORD channel) {
        return name + (" " + std::to_string(channel));
    };
    EXPECT_THAT(m_player.bass.calls,
                ElementsAre(call("BASS_ChannelStop", current),
                            call("BASS_StreamFree", current),
                            call("BASS_ChannelStop", next),
                            call("BASS_StreamFree", next)));
    EXPECT_EQ(m_state.CurrentChannel, current);
    EXPECT_TRUE(m_state.AdvanceRequested);
    EXPECT_EQ(m_wmain.lblTime.Caption.Get(), "00:00");
    EXPECT_EQ(m_wmain.lblSongName.Caption.Get(), "Velmo Player - Made to be heared!    ***  ");
    EXPECT_EQ(m_player.status.told.back(), "stopped");
}

TEST_F(Controls, NextAndBackGoRoundWhateverTheMethod)
{
    m_state.AdvanceRequested = true;
    for (const std::size_t row : {2U, 3U, 1U}) {
        m_transport.imgNext_MouseUp(Left);
        EXPECT_EQ(m_rows.SelectedEntry(), row);
        EXPECT_EQ(m_state.CurrentFile, m_rows.Row(row).Path);
    }
    EXPECT_FALSE(m_state.AdvanceRequested);
    for (const std::size_t row : {3U, 2U}) {
        m_transport.imgBack_MouseUp(Left);
        EXPECT_EQ(m_state.CurrentFile, m_rows.Row(row).Path);
        EXPECT_FALSE(m_rows.IsMarked(row % 3 + 1)) << "only the new row is marked";
    }
}

TEST_F(Controls, ARandomEntryIsPlayedOrWithThePickZeroNothing)
{
    m_state.AdvanceRequested = true;
    m_player.random.numbers = {0.1F, 0.6F};
    EXPECT_THROW(m_transport.PlayRandomEntry(), std::out_of_range);
    EXPECT_TRUE(m_state.AdvanceRequested);
    EXPECT_FALSE(m_rows.IsMarked(1));
    EXPECT_THAT(m_player.bass.calls, IsEmpty());
    m_transport.PlayRandomEntry();
    EXPECT_FALSE(m_state.AdvanceRequested);
    EXPECT_EQ(m_state.CurrentFile, "/m/b.mp3");
    m_rows.Clear();
    m_transport.PlayRandomEntry();
    EXPECT_EQ(m_player.random.seeds.size(), 2U);
}

TEST_F(Controls, MuteOnlySilences)
{
    m_player.bass.volume = 0.7F;
    m_transport.Mute();
    EXPECT_EQ(m_player.bass.volume, 0);
    EXPECT_EQ(m_state.MuteSavedVolume, 1) << "rounded";
    m_transport.Mute();
    EXPECT_EQ(m_player.bass.volume, 0);
    EXPECT_EQ(m_state.MuteSavedVolume, 0);
}

/// What each key of the two kinds of window reaches.
TEST_F(Controls, EveryKeyHasItsCommand)
{
    struct FakeMixer final : ports::MixerProgram
    {
        void Start() override { ++starts; }
        int starts = 0;
    } mixer;
    std::string reached;
    const auto note = [&](const char* name) { return [&reached, name] { reached = name; }; };
    KeyCalls calls{.ShowFinder = note("finder"),
                   .ShowShutDown = note("frmShutDown"),
                   .ShowAbout = note("frmAbout"),
                   .ShowDj = note("dj"),
                   .ShowSinfo = note("Sinfo"),
                   .ShowOptions = note("Options"),
                   .ShowEntryInfo = note("frmEntryInfo"),
                   .AddFilesDialog = note("add"),
                   .OpenListDialog = note("open list"),
                   .SaveListDialog = note("save list"),
                   .RestartCore = note("restart"),
                   .ExitProgram = note("exit"),
                   .STClose = note("short close")};
    TransportKeys keys(m_transport, mixer, calls);
    const struct
    {
        char32_t key;
        const char* reached;
    } cases[] = {
        {U'f',      "finder"     },
        {U'H',      "frmShutDown"},
        {U'k',      "frmAbout"   },
        {U'd',      "dj"         },
        {U'i',      "Sinfo"      },
        {U'a',      "add"        },
        {U'l',      "open list"  },
        {U's',      "save list"  },
        {U'r',      "restart"    },
        {U'x',      "exit"       },
        {U'q',      ""           },
        {U'\u00e9', ""           },
    };
    for (const auto& c : cases) {
        reached.clear();
        keys.KeyPress(TransportKeys::Window::Main, c.key);
        EXPECT_EQ(reached, c.reached);
    }
    KeyCalls unbound;
    TransportKeys(m_transport, mixer, unbound).KeyPress(TransportKeys::Window::Main, U'f');

    const auto press = [&](char32_t key) { keys.KeyPress(TransportKeys::Window::Other, key); };
    reached.clear();
    m_player.random.numbers = {0.6F};
    press(U'R');
    EXPECT_EQ(reached, "") << "no restart on the other windows";
    EXPECT_EQ(m_state.CurrentFile, "/m/b.mp3");
    press(U'n');
    EXPECT_EQ(m_state.CurrentFile, "/m/c.mp3");
    press(U'b');
    EXPECT_EQ(m_state.CurrentFile, "/m/b.mp3");
    press(U'p');
    EXPECT_TRUE(m_state.PausedFlag);
    press(U'e');
    EXPECT_EQ(m_wmain.lblTime.Caption.Get(), "00:00");
    press(U'm');
    EXPECT_EQ(m_player.bass.volume, 0);
    press(U'o');
    EXPECT_EQ(m_player.dialogs.fileDialogs.size(), 1U);
    press(U'v');
    EXPECT_EQ(mixer.starts, 1);
    m_state.AdvanceRequested = true;
    m_rows.Mark(3);
    press(U'\r');
    EXPECT_EQ(m_state.CurrentFile, "/m/c.mp3");
    EXPECT_TRUE(m_state.AdvanceRequested) << "Enter doesn't touch it";
    m_rows.Clear();
    EXPECT_THROW(press(U'\r'), std::out_of_range);
    EXPECT_FALSE(m_wmain.tmrBASS.Enabled);
}

} // namespace
} // namespace velmo
