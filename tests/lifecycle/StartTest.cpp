#include "lifecycle/BringUp.h"
#include "lifecycle/HandOver.h"
#include "lifecycle/StartFixture.h"
#include "lifecycle/mMain.h"
#include "support/FakeInstance.h"

#include <gmock/gmock.h>

namespace velmo {
namespace {

using ::testing::ElementsAre;

TEST_F(StartTest, TheSplashWindowStartsTheCoreOnceAtItsTick)
{
    forms::frmSplash splash;
    controls::Form neighbour("neighbour", "", 0, 0, controls::BorderStyle::None);
    BringUp bringUp(splash, m_player.wmain, {&neighbour}, m_core, m_player.settings, m_application);
    m_player.Set("Options", "ShowSplashScreen", "TRUE");
    bringUp.Run();
    EXPECT_TRUE(splash.Visible);
    EXPECT_TRUE(splash.tmrcZat.Enabled);
    EXPECT_FALSE(m_player.wmain.Visible);
    bringUp.tmrcZat_Timer();
    EXPECT_FALSE(splash.Visible);
    EXPECT_FALSE(splash.tmrcZat.Enabled);
    EXPECT_TRUE(m_player.wmain.Visible);

    // Without it the window is there at once, and the list behind the first pictures of all that
    // is shown; a failed start ends the process.
    m_player.wmain.Hide();
    m_player.Set("Options", "ShowSplashScreen", "False");
    neighbour.Visible = true;
    bringUp.Run();
    EXPECT_TRUE(m_player.wmain.Visible);
    m_player.wmain.HasPicture = true;
    m_player.wmain.FirstPicture();
    EXPECT_FALSE(m_core.IsListOpen());
    neighbour.HasPicture = true;
    neighbour.FirstPicture();
    EXPECT_TRUE(m_core.IsListOpen());
    m_player.bass.initSucceeds = false;
    m_player.wmain.Hide();
    bringUp.Run();
    EXPECT_FALSE(m_player.wmain.Visible);
    EXPECT_THAT(m_application.quits, ElementsAre(1));

    // What ended the program during a box has given its status already.
    bringUp.Run();
    EXPECT_THAT(m_application.quits, ElementsAre(1));
}

TEST_F(StartTest, WhatACommandLineNamesReachesTheListIfItExists)
{
    m_player.files.directories = {"/m"};
    const auto rowsAfter = [this](const std::string& text) {
        m_application.commandLine = text;
        EXPECT_TRUE(Run()) << text;
        const std::size_t count = m_player.playlist.pl.Count();
        ReceiveHandOver({.dwData = 0, .bytes = text}, m_player.files, m_player.adding);
        return std::pair(count, m_player.playlist.pl.Count());
    };
    const std::vector<std::string> nothings = {
        "/m/gone.mp3", "http://radio/stream.mp3", "bare.mp3", "/m/", std::string(1, '\0'), ""};
    for (const std::string& nothing : nothings)
        EXPECT_EQ(rowsAfter(nothing), std::pair(0UL, 0UL)) << nothing;
    EXPECT_EQ(rowsAfter("/m/a.mp3"), std::pair(1UL, 2UL));
    EXPECT_EQ(rowsAfter("/m"), std::pair(3UL, 4UL));
}

TEST(Role, TheFirstProcessPlaysAndLaterOnesHandOver)
{
    const auto expect = [](test::FakeInstance instance,
                           const char* allowMany,
                           const char* commandLine,
                           std::vector<std::string> calls) {
        test::FakePlayer player;
        player.Set("Options", "AllowMultipleInstances", allowMany);
        const ProcessRole role = DecideRole(instance, player.settings, commandLine);
        EXPECT_EQ(role == ProcessRole::Player, calls.empty());
        calls.insert(calls.begin(), "mutex Velmo Player_APPLICATION_MUTEX");
        EXPECT_EQ(instance.calls, calls);
    };
    test::FakeInstance instance;
    expect(instance, "false", "/a", {});
    instance.isFirst = false;
    expect(instance, "TRUE", "/a", {});
    expect(instance, "false", "/a", {"find", "send 2 /a"});
    expect(instance, "false", "", {"find", "activate"});
    instance.visible = false;
    expect(instance, "no", "", {"find", std::string("send 1 ") + '\0'});
    instance.found = false;
    expect(instance, "false", "/a", {"find"});
}

} // namespace
} // namespace velmo
