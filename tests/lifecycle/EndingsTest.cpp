#include "lifecycle/ExitProgram.h"
#include "lifecycle/RestartCore.h"
#include "lifecycle/STClose.h"
#include "lifecycle/StartFixture.h"
#include "support/FakeInstance.h"

#include <gmock/gmock.h>

namespace velmo {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// A player with two tracks that play and a window that has been moved. All that an ending does is
/// written into one list, in order.
class Endings : public StartTest
{
protected:
    Endings()
    {
        m_player.AddSound("/m/a.mp3", {.seconds = 10});
        m_player.playlist.pl.Add({.Text = "1. a", .Length = "00:10", .Path = "/m/a.mp3"});
        m_player.tracks.PlayTrack("/m/a.mp3");
        m_player.tracks.LoadNextChannel("/m/a.mp3");
        m_player.table.BASS_ChannelPlay(m_player.state.NextChannel, 1);
        m_wmain.Loaded = true;
        m_wmain.Show();
        m_player.playlist.Show();
        m_wmain.Left = 300;
        m_wmain.Top = 450;
        m_wmain.imgVolumeTicker.Left = m_wmain.imgVolumeBar.Left.Get();
        m_player.bass.volume = 0;
        WriteDown();
        m_log.clear();
    }

    void WriteDown()
    {
        const auto write = [this](const std::string& text) { m_log.push_back(text); };
        m_player.status.onTold = write;
        m_player.settingsFile.onWrite = write;
        m_player.files.onReplace = [write](const std::string& path) { write("save " + path); };
        m_instance.onRelease = [write] { write("release"); };
        m_wmain.Changed = [this, write] {
            if (!m_wmain.Visible && !std::exchange(m_hidden, true))
                write("hide");
        };
        m_wmain.tmrBASS.Changed = [this, write] {
            if (!m_wmain.tmrBASS.Enabled)
                write("tmrBASS off");
        };
    }

    EndingCalls Calls()
    {
        const auto note = [this](const char* text) {
            return [this, text] { m_log.emplace_back(text); };
        };
        return {.IsListOpen = [this] { return m_listOpen; },
                .DetachHandOver = note("detach"),
                .EndStandByGuard = note("end guard"),
                .RemoveTrayIcon = note("remove icon"),
                .GiveBackSystemMenu = note("system menu"),
                .ReleaseRegions = note("regions"),
                .RemoveAllWindows = note("unstick")};
    }

    forms::wmain& m_wmain = m_player.wmain;
    bool m_hidden = false;
    bool m_listOpen = true;
    test::FakeInstance m_instance;
    EndingSteps m_steps{
        {m_player.table,
         m_player.settings,
         m_player.state,
         m_wmain, m_player.playlist,
         m_player.list,
         m_player.status,
         m_player.curves,
         m_instance},
        Calls()
    };
    ExitProgram m_exit{
        m_steps, {&m_wmain, &m_player.playlist, &m_player.fX},
         m_application
    };
    RestartCore m_restart{m_steps, m_core, {&m_player.fX}, m_application};
};

TEST_F(Endings, ExitGoesThroughItsListOnce)
{
    m_wmain.State = controls::WindowState::Minimized;
    m_log.clear();
    m_exit.Run();
    m_exit.Run();
    EXPECT_EQ(m_player.bass.TakeCalls(),
              "exit; hide; BASS_SetVolume 0; RTM Volume=68; tmrBASS off; BASS_PluginFree 0; "
              "BASS_ChannelStop 101; BASS_ChannelStop 103; BASS_Stop; BASS_Free; "
              "RTM X=300; RTM Y=450; save /app/list.zvl; save /app/zuvio.zfx; "
              "RTM State=Minimized; detach; end guard; remove icon; system menu; regions; release");
    EXPECT_THAT(m_application.quits, ElementsAre(0));
}

TEST_F(Endings, ExitLeavesOutWhatWasNeverThere)
{
    const auto expect = [this](const char* what, const std::vector<std::string>& leftOut) {
        m_log.clear();
        ExitProgram(m_steps, {}, m_application).Run();
        for (const std::string& line : leftOut)
            EXPECT_THAT(m_log, ::testing::Not(::testing::Contains(line))) << what;
        EXPECT_EQ(m_log.back(), "release") << what;
    };
    m_player.bass.channels.clear();
    expect("nothing plays", {"BASS_ChannelStop 101"});
    m_player.SetAll("Options", "AllowMultipleInstances=True|AvoidStandBy=False");
    expect("several instances, no stand-by guard", {"detach", "end guard"});
    m_player.bass.volume = 0.5F;
    expect("sound is on", {"BASS_SetVolume 0"});
    m_player.bass.volume = 0;
    m_player.state.MuteSavedVolume = 1;
    expect("muted by key", {"BASS_SetVolume 0"});
    m_player.files.writesFail = true;
    expect("a disk that is full: the rest goes on", {});
    m_listOpen = false;
    expect("ended in a restart, before the list was read again", {"save /app/list.zvl"});
    m_listOpen = true;
    m_wmain.Loaded = false;
    m_player.table = {};
    expect("ended by a box of the start, before the library was loaded",
           {"RTM Volume=68", "RTM X=300", "save /app/list.zvl", "RTM State=Normal", "BASS_Free"});
}

TEST_F(Endings, TheShortCloseSavesNeitherEqualizerNorState)
{
    STClose(m_steps, m_application).Run();
    EXPECT_EQ(m_player.bass.TakeCalls(),
              "RTM Volume=67.5; tmrBASS off; BASS_Free; RTM X=300; RTM Y=450; save /app/list.zvl; "
              "release; remove icon");
    EXPECT_THAT(m_application.quits, ElementsAre(0));
    EXPECT_TRUE(m_wmain.Visible) << "it unloads nothing";
}

TEST_F(Endings, RestartSavesUnloadsAndStartsWithoutTheCommandLine)
{
    m_application.commandLine = "/m/other.mp3";
    m_player.files.files["/m/other.mp3"] = "";
    m_player.playlist.Hide();
    m_player.state.PausedFlag = true;
    m_wmain.lblTime.Caption = "00:07";
    m_log.clear();
    m_restart.Run();
    EXPECT_THAT(m_player.bass.TakeCalls(),
                ::testing::StartsWith(
                    "RTM Volume=68; tmrBASS off; BASS_Free; RTM X=300; RTM Y=450; "
                    "save /app/list.zvl; save /app/zuvio.zfx; hide; unstick; regions; end guard; "
                    "remove icon; open /program/libbass.so; "));
    EXPECT_TRUE(m_wmain.Visible);
    EXPECT_EQ(m_wmain.lblTime.Caption.Get(), "00:00");
    EXPECT_EQ(m_player.playlist.pl.Count(), 1U) << "hidden or not, the list is there once";
    EXPECT_EQ(m_player.state.CurrentChannel, 101U) << "the transport keeps its variables";
    EXPECT_TRUE(m_player.state.PausedFlag);
    EXPECT_THAT(m_application.quits, IsEmpty());
}

TEST_F(Endings, RestartWaitsForTheEndOfTheEventAndAFailedOneEndsTheProgram)
{
    std::vector<std::function<void()>> posted;
    m_application.onPost = [&](auto handler) { posted.push_back(std::move(handler)); };
    m_restart.Queue();
    m_restart.Queue();
    EXPECT_THAT(m_log, IsEmpty());
    ASSERT_EQ(posted.size(), 1U);
    m_player.files.files.erase("/program/libbass.so");
    posted.front()();
    EXPECT_EQ(m_log.back(), "box BASS.DLL: BASS.DLL does not exist.\nApplication will terminate.");
    EXPECT_THAT(m_application.quits, ElementsAre(1));

    m_log.clear();
    m_restart.Run();
    EXPECT_THAT(m_log, IsEmpty()) << "a program that ends does not start again";
}

} // namespace
} // namespace velmo
