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
    BringUp bringUp(splash, m_player.wmain, m_core, m_player.settings, m_application);
    m_player.settings.WriteSetting("Options", "ShowSplashScreen", "TRUE");
    bringUp.Run();
    EXPECT_TRUE(splash.Visible);
    EXPECT_TRUE(splash.tmrcZat.Enabled);
    EXPECT_FALSE(m_player.wmain.Visible);
    bringUp.tmrcZat_Timer();
    EXPECT_FALSE(splash.Visible);
    EXPECT_FALSE(splash.tmrcZat.Enabled);
    EXPECT_TRUE(m_player.wmain.Visible);

    // Without it the window is there at once, and the list behind its first picture; a failed start
    // ends the process.
    m_player.wmain.Hide();
    m_player.settings.WriteSetting("Options", "ShowSplashScreen", "False");
    bringUp.Run();
    EXPECT_TRUE(m_player.wmain.Visible);
    EXPECT_FALSE(m_core.IsListOpen());
    m_player.wmain.FirstPicture();
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

TEST_F(StartTest, AHandOverOfWhatExistsReachesTheListAndNothingElseDoes)
{
    m_player.files.directories = {"/m"};
    for (const std::string& bytes :
         {std::string("/m/gone.mp3"), std::string(1, '\0'), std::string("/m/")})
        ReceiveHandOver({.dwData = 0, .bytes = bytes}, m_player.files, m_player.adding);
    EXPECT_EQ(m_player.playlist.pl.Count(), 0U);
    ReceiveHandOver({.dwData = 0, .bytes = "/m/a.mp3"}, m_player.files, m_player.adding);
    ReceiveHandOver({.dwData = 0, .bytes = "/m"}, m_player.files, m_player.adding);
    EXPECT_EQ(m_player.playlist.pl.Count(), 2U);
}

TEST(Role, TheFirstProcessPlaysAndLaterOnesHandOver)
{
    struct Case
    {
        bool isFirst;
        const char* allowMany;
        const char* commandLine;
        bool found;
        bool visible;
        ProcessRole role;
        std::vector<std::string> calls;
    };
    const std::vector<std::string> sentHidden = {"find", std::string("send 1 ") + '\0'};
    const Case cases[] = {
        {true,  "false", "/a", true,  true,  ProcessRole::Player,    {}                   },
        {false, "TRUE",  "/a", true,  true,  ProcessRole::Player,    {}                   },
        {false, "false", "/a", true,  true,  ProcessRole::Forwarder, {"find", "send 2 /a"}},
        {false, "false", "/a", false, true,  ProcessRole::Forwarder, {"find"}             },
        {false, "false", "",   true,  true,  ProcessRole::Forwarder, {"find", "activate"} },
        {false, "no",    "",   true,  false, ProcessRole::Forwarder, sentHidden           },
    };
    for (const Case& c : cases) {
        test::FakePlayer player;
        test::FakeInstance instance;
        instance.isFirst = c.isFirst;
        instance.found = c.found;
        instance.visible = c.visible;
        player.settings.WriteSetting("Options", "AllowMultipleInstances", c.allowMany);
        EXPECT_EQ(DecideRole(instance, player.settings, c.commandLine), c.role);
        std::vector<std::string> calls{"mutex Velmo Player_APPLICATION_MUTEX"};
        calls.insert(calls.end(), c.calls.begin(), c.calls.end());
        EXPECT_EQ(instance.calls, calls);
    }
}

} // namespace
} // namespace velmo
