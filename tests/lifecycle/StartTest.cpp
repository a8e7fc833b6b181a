#include "lifecycle/BringUp.h"
#include "lifecycle/ExitProgram.h"
#include "lifecycle/HandOver.h"
#include "lifecycle/StartCore.h"
#include "lifecycle/mMain.h"
#include "support/FakePlayer.h"

#include <gmock/gmock.h>

namespace velmo {
namespace {

using ::testing::ElementsAre;

class FakeApplication final : public ports::Application
{
public:
    std::string CommandLine() override { return commandLine; }
    std::string ProgramDirectory() override { return "/program/"; }
    std::string ApplicationDirectory() override { return "/app/"; }
    void Post(std::function<void()> handler) override { handler(); }
    void Quit(int status) override { quits.push_back(status); }

    std::string commandLine;
    std::vector<int> quits;
};

/// A library that gives the functions of a fake engine.
class FakeLibraries final : public ports::Libraries
{
public:
    explicit FakeLibraries(const modBass& table)
        : m_table(table)
    {}

    std::unique_ptr<Library> Open(const std::string& path) override
    {
        opened.push_back(path);
        struct Fake final : Library
        {
            Fake(const modBass& table, std::string without)
                : m_table(table)
                , m_without(std::move(without))
            {}
            void* Symbol(const char* name) override
            {
                if (name == m_without)
                    return nullptr;
                if (name == std::string("BASS_GetVersion"))
                    return reinterpret_cast<void*>(m_table.BASS_GetVersion);
                if (name == std::string("BASS_Init"))
                    return reinterpret_cast<void*>(m_table.BASS_Init);
                return reinterpret_cast<void*>(m_table.BASS_Stop);
            }
            const modBass& m_table;
            std::string m_without;
        };
        return std::make_unique<Fake>(m_table, without);
    }

    std::vector<std::string> opened;
    std::string without;

private:
    const modBass& m_table;
};

class FakeInstance final : public ports::Instance
{
public:
    bool CreateInstanceMutex(const std::string& name) override
    {
        calls.push_back("mutex " + name);
        return isFirst;
    }
    void MarkMainWindow(ports::InstanceEvents) override {}
    std::optional<ports::RunningInstance> FindRunningInstance(
        std::chrono::steady_clock::time_point) override
    {
        calls.emplace_back("find");
        return found ? std::optional(ports::RunningInstance{.address = "there"}) : std::nullopt;
    }
    bool IsWindowVisible(const ports::RunningInstance&,
                         std::chrono::steady_clock::time_point) override
    {
        return visible;
    }
    bool Send(const ports::RunningInstance&,
              const ports::HandOverRecord& record,
              std::chrono::steady_clock::time_point) override
    {
        calls.push_back("send " + std::to_string(record.bytes.size()) + " " + record.bytes);
        return true;
    }
    bool ActivateWindow(const ports::RunningInstance&,
                        std::chrono::steady_clock::time_point) override
    {
        calls.emplace_back("activate");
        return true;
    }
    void ReleaseInstance() override { calls.emplace_back("release"); }

    bool isFirst = true;
    bool found = true;
    bool visible = true;
    std::vector<std::string> calls;
};

class Start : public ::testing::Test
{
protected:
    Start()
    {
        m_player.files.files["/program/libbass.so"] = "";
        m_player.files.files["/m/a.mp3"] = "";
    }

    bool Run(bool expectWindow = true)
    {
        bool windowMade = false;
        StartCore core({m_application, m_player.files, m_libraries, m_player.dialogs},
                       m_player.settings,
                       m_table,
                       m_player.adding,
                       [&]() -> void* {
                           windowMade = true;
                           EXPECT_TRUE(m_player.bass.calls.empty())
                               << "the window comes before the device";
                           return nullptr;
                       });
        const bool succeeded = core.Run();
        EXPECT_EQ(windowMade, expectWindow);
        return succeeded;
    }

    test::FakePlayer m_player;
    FakeApplication m_application;
    FakeLibraries m_libraries{m_player.table};
    modBass m_table;
};

TEST_F(Start, OpensTheLibraryBesideTheProgramThenTheDeviceThenTheCommandLine)
{
    m_application.commandLine = "/m/a.mp3";
    m_player.settings.WriteSetting("Sound", "Frequency", "48000 Hz");
    EXPECT_TRUE(Run());
    EXPECT_THAT(m_libraries.opened, ElementsAre("/program/libbass.so"));
    EXPECT_THAT(m_player.bass.calls, ElementsAre("BASS_Init -1 48000 260"));
    EXPECT_EQ(m_player.files.current, "/app/");
    ASSERT_EQ(m_player.playlist.pl.Count(), 1U);
    EXPECT_EQ(m_player.playlist.pl.Row(1).Path, "/m/a.mp3");
    EXPECT_TRUE(m_player.dialogs.boxes.empty());
}

TEST_F(Start, EachFatalFailureShowsItsBoxAndEndsTheStart)
{
    const auto box = [](const char* text, const char* title) {
        return test::FakeDialogs::Box{
            .text = text, .title = title, .style = ports::MessageStyle::Critical};
    };
    m_player.bass.initSucceeds = false;
    EXPECT_FALSE(Run());
    m_player.bass.version = 0x02030000;
    EXPECT_FALSE(Run(false));
    m_libraries.without =
        "BASS_ChannelPlay"; // a library that lacks a function counts as the wrong one
    EXPECT_FALSE(Run(false));
    m_player.files.files.erase("/program/libbass.so");
    EXPECT_FALSE(Run(false));
    const auto wrongVersion =
        box("BASS version 2.4 was not loaded.\nApplication will terminate.", "BASS.DLL");
    EXPECT_THAT(
        m_player.dialogs.boxes,
        ElementsAre(
            box("Can't initialize digital sound system.\nApplication will terminate.", "Error"),
            wrongVersion,
            wrongVersion,
            box("BASS.DLL does not exist.\nApplication will terminate.", "BASS.DLL")));
    EXPECT_EQ(m_player.playlist.pl.Count(), 0U);
}

TEST_F(Start, ACommandLineThatNamesNothingStartsAsWithoutOne)
{
    for (const char* nothing : {"", "/m/gone.mp3", "http://radio/stream.mp3", "/m/", "bare.mp3"}) {
        m_application.commandLine = nothing;
        m_player.bass.calls.clear();
        EXPECT_TRUE(Run()) << nothing;
        EXPECT_EQ(m_player.playlist.pl.Count(), 0U) << nothing;
    }
}

TEST_F(Start, TheSplashWindowStartsTheCoreOnceAtItsTick)
{
    forms::frmSplash splash;
    StartCore core({m_application, m_player.files, m_libraries, m_player.dialogs},
                   m_player.settings,
                   m_table,
                   m_player.adding,
                   [] { return nullptr; });
    BringUp bringUp(splash, m_player.wmain, core, m_player.settings, m_application);
    m_player.settings.WriteSetting("Options", "ShowSplashScreen", "TRUE");
    bringUp.Run();
    EXPECT_TRUE(splash.Visible);
    EXPECT_TRUE(splash.tmrcZat.Enabled);
    EXPECT_FALSE(m_player.wmain.Visible);
    bringUp.tmrcZat_Timer();
    EXPECT_FALSE(splash.Visible);
    EXPECT_FALSE(splash.tmrcZat.Enabled);
    EXPECT_TRUE(m_player.wmain.Visible);

    // Without it the window is there at once; a failed start ends the process.
    m_player.wmain.Hide();
    m_player.settings.WriteSetting("Options", "ShowSplashScreen", "False");
    m_player.bass.calls.clear();
    bringUp.Run();
    EXPECT_TRUE(m_player.wmain.Visible);
    m_player.bass.initSucceeds = false;
    m_player.wmain.Hide();
    bringUp.Run();
    EXPECT_FALSE(m_player.wmain.Visible);
    EXPECT_THAT(m_application.quits, ElementsAre(1));
}

TEST_F(Start, AHandOverOfWhatExistsReachesTheListAndNothingElseDoes)
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
        FakeInstance instance;
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

TEST(Exit, StopsTheSoundSavesTheWindowAndReleasesTheInstanceOnce)
{
    test::FakePlayer player;
    FakeApplication application;
    FakeInstance instance;
    player.AddSound("/m/a.mp3", {.seconds = 10});
    player.wmain.Show();
    player.wmain.Loaded = true;
    player.wmain.Left = 300;
    player.wmain.Top = 450;
    player.tracks.PlayTrack("/m/a.mp3");
    player.bass.calls.clear();
    ExitProgram exit(player.table,
                     player.settings,
                     player.state,
                     player.wmain,
                     {&player.wmain},
                     instance,
                     application);
    exit.Run();
    exit.Run();
    EXPECT_THAT(player.bass.calls, ElementsAre("BASS_ChannelStop 101", "BASS_Stop", "BASS_Free"));
    EXPECT_FALSE(player.wmain.Visible);
    EXPECT_FALSE(player.wmain.tmrBASS.Enabled);
    EXPECT_EQ(player.settings.ReadSetting("RTM", "X", ""), "300");
    EXPECT_EQ(player.settings.ReadSetting("RTM", "Y", ""), "450");
    EXPECT_EQ(player.settings.ReadSetting("RTM", "State", ""), "Normal");
    EXPECT_THAT(instance.calls, ElementsAre("release"));
    EXPECT_THAT(application.quits, ElementsAre(0));

    // A start that ended before the library and the window were loaded.
    player.table = {};
    player.wmain.Loaded = false;
    player.wmain.Left = 0;
    ExitProgram early(
        player.table, player.settings, player.state, player.wmain, {}, instance, application);
    early.Run();
    EXPECT_EQ(application.quits.size(), 2U);
    EXPECT_EQ(player.settings.ReadSetting("RTM", "X", ""), "300");
}

} // namespace
} // namespace velmo
