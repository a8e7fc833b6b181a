#include "lifecycle/StartFixture.h"

#include <gmock/gmock.h>

#include <cstring>
#include <sstream>

namespace velmo {
namespace {

using ::testing::ElementsAre;

TEST_F(StartTest, GoesThroughItsListInOrder)
{
    m_application.commandLine = "/m/a.mp3";
    m_player.files.files["/program/plugins/bass_a.so"] = "";
    m_player.bass.plugins["/program/plugins/bass_a.so"] = {};
    Set("Sound", "Frequency", "48000 Hz");
    Set("Sound", "LogarithmicVolume", "TRUE");
    Set("Sound", "EAX_Preset", "Swer Pipe");
    Set("Sound", "EAX_RVolume", "0.5");
    Set("Sound", "EAX_RDecay", "-1");
    Set("Display", "ShowIn", "Taskbar and System Tray");
    Set("Options", "AlwaysOnTop", "true");
    Set("Files", "CheckAssociationOnStart", "TRUE");
    Set("Files", "Extensions", "*.MP3;*.Ogg");
    Set("ShutDownSystem", "Status", "Enabled");
    Set("Setup", "UseDefaultNetSettings", "FALSE");
    EXPECT_TRUE(Run());
    EXPECT_THAT(m_log,
                ElementsAre("open /program/libbass.so",
                            "window",
                            "BASS_Init -1 48000 260",
                            "open /program/libbass_fx.so",
                            "BASS_PluginLoad /program/plugins/bass_a.so 0",
                            "palette",
                            "BASS_SetConfig 7 -1",
                            "BASS_SetConfig 8 -1",
                            "BASS_SetConfig 9 0",
                            "BASS_SetConfig 10 0",
                            "BASS_SetConfig 0 500",
                            "BASS_SetConfig 12 5000",
                            "BASS_SetConfig 11 5000",
                            "BASS_GetInfo",
                            "BASS_SetEAXParameters 21 0.5 -1 0",
                            "tray Velmo Player",
                            "associate mp3",
                            "associate ogg",
                            "associate: the program",
                            "BASS_SetConfigPtr 17 ''"));
    EXPECT_EQ(m_player.state.CurrentTitleText, "Velmo Player - Made to be heard!    ***  ");
    EXPECT_TRUE(m_systray.TrayIconShown);
    EXPECT_TRUE(m_resources.submnuAlwaysOnTop.Checked);
    EXPECT_EQ(m_shutdown.ShutdownStatus, "Enabled");
    EXPECT_EQ(m_player.files.current, "/app/");
    ASSERT_EQ(m_player.playlist.pl.Count(), 1U);
    EXPECT_EQ(m_player.playlist.pl.Row(1).Path, "/m/a.mp3");

    // A second time all is built anew, from what the settings say now, and the list is read.
    m_player.playlist.pl.Clear();
    Set("Display", "ShowIn", "Taskbar");
    Set("Options", "AlwaysOnTop", "false");
    Set("ShutDownSystem", "Status", "enabled");
    EXPECT_TRUE(Run(StartKind::Restart));
    EXPECT_EQ(m_plugins.Entries.size(), 2U);
    EXPECT_FALSE(m_systray.TrayIconShown);
    EXPECT_FALSE(m_resources.submnuAlwaysOnTop.Checked);
    EXPECT_EQ(m_shutdown.ShutdownStatus, "Disabled") << "compared with its case";
    EXPECT_EQ(m_player.playlist.pl.Count(), 1U);
}

TEST_F(StartTest, EachFatalFailureShowsItsBoxAndEndsTheStart)
{
    m_player.bass.initSucceeds = false;
    EXPECT_FALSE(Run());
    EXPECT_THAT(m_log,
                ElementsAre("open /program/libbass.so",
                            "window",
                            "BASS_Init -1 44100 260",
                            "box Error: Can't initialize digital sound system.\n"
                            "Application will terminate."));
    const auto wrongVersion =
        ElementsAre("open /program/libbass.so",
                    "box BASS.DLL: BASS version 2.4 was not loaded.\nApplication will terminate.");
    m_player.bass.version = 0x02030000;
    EXPECT_FALSE(Run());
    EXPECT_THAT(m_log, wrongVersion);
    m_player.bass.version = 0x02040000;
    m_libraries.libraries["/program/libbass.so"].functions["BASS_ChannelPlay"] = nullptr;
    EXPECT_FALSE(Run()) << "a library that lacks a function counts as the wrong one";
    EXPECT_THAT(m_log, wrongVersion);
    m_player.files.files.erase("/program/libbass.so");
    EXPECT_FALSE(Run());
    EXPECT_THAT(m_log,
                ElementsAre("box BASS.DLL: BASS.DLL does not exist.\nApplication will terminate."));
}

TEST_F(StartTest, WithoutEqualizerAddOnTheProgramGoesOn)
{
    const std::string opened = "open /program/libbass_fx.so";
    const std::string wrong = "box BASS_FX.DLL: An incorrect version of BASS_FX.DLL was loaded "
                              "(2.4 is required)\nEqualizer will be disabled.";
    const std::string missing =
        "box BASS_FX.DLL: BASS_FX.DLL does not exists!\nEqualizer will be disabled.";
    const std::string off = "no equalizer";
    const auto behindDevice = [this](std::ptrdiff_t count) {
        EXPECT_TRUE(Run());
        return std::vector<std::string>(m_log.begin() + 3, m_log.begin() + 3 + count);
    };
    m_player.bass.effectsVersion = 0x02030000;
    EXPECT_THAT(behindDevice(4), ElementsAre(opened, wrong, off, "palette"));
    m_player.files.files.erase("/program/libbass_fx.so");
    m_libraries.libraries.erase("/program/libbass_fx.so");
    EXPECT_THAT(behindDevice(6), ElementsAre(missing, off, opened, wrong, off, "palette"));

    // What ends the program while the first box is open ends the start there.
    m_player.dialogs.whileOpen = [this](const auto&) { m_application.Quit(0); };
    EXPECT_FALSE(Run());
    EXPECT_EQ(m_log.back(), "no equalizer");
}

TEST_F(StartTest, PluginsAreLoadedListedOrPassedOverByTheirKeys)
{
    const BASS_PLUGINFORM ape{.ctype = 1, .name = "APE", .exts = "*.ape;*.mac"};
    const BASS_PLUGINFORM flac{.ctype = 2, .name = "FLAC", .exts = "*.flac"};
    auto& plugins = m_player.bass.plugins;
    plugins["/program/plugins/bass_both.so"] = {ape, flac};
    plugins["/program/plugins/bass_none.so"] = {};
    plugins["/program/plugins/bass_off.so"] = {ape};
    plugins["/program/plugins/bass_other.so"] = {ape};
    plugins["/program/plugins/else.so"] = {ape};
    plugins["/app/plugins/bass_both.so"] = {flac};
    plugins["/app/plugins/bass_user.so"] = {flac};
    for (const auto& [path, formats] : plugins)
        m_player.files.files[path] = "";
    m_player.files.files["/program/plugins/bass_refused.so"] = "";
    Set("Plugins", "bass_off.so", "FALSE");
    Set("Plugins", "bass_other.so", "yes");
    EXPECT_TRUE(Run());
    std::erase_if(m_log, [](const auto& call) { return !call.starts_with("BASS_Plugin"); });
    EXPECT_THAT(m_log,
                ElementsAre("BASS_PluginLoad /program/plugins/bass_both.so 0",
                            "BASS_PluginLoad /program/plugins/bass_none.so 0",
                            "BASS_PluginLoad /program/plugins/bass_refused.so 0",
                            "BASS_PluginLoad /app/plugins/bass_user.so 0"));
    std::vector<std::string> rows;
    for (const PluginEntry& row : m_plugins.Entries)
        rows.push_back(row.FileName + "|" + row.HandleText + "|" + (row.Loaded ? "yes" : "no") + "|"
                       + row.Extensions + "|" + row.Formats);
    EXPECT_THAT(rows,
                ElementsAre("||no||",
                            "bass_both.so|101|yes|*.ape;*.mac#*.flac|APE#FLAC",
                            "bass_none.so|102|yes||",
                            "bass_off.so|0|no||",
                            "bass_user.so|103|yes|*.flac|FLAC"));

    FillFormats(m_table, m_plugins.Entries[4], 103);
    EXPECT_EQ(m_plugins.Entries[4].Formats, "LAC#FLAC") << "the second time costs a character";
}

TEST_F(StartTest, PluginsEndAtAFullTableAndTheirFolderMayBeMissing)
{
    for (int i = 0; i < 300; ++i) {
        const std::string path = "/app/plugins/bass" + std::to_string(i) + ".so";
        m_player.files.files[path] = "";
        m_player.bass.plugins[path] = {};
    }
    m_player.files.unreachable = {"/program/plugins/"};
    ::testing::internal::CaptureStderr();
    EXPECT_TRUE(Run());
    EXPECT_EQ(::testing::internal::GetCapturedStderr(),
              "velmo: plugins missing: /program/plugins/\n");
    EXPECT_EQ(m_plugins.Entries.size(), 256U);
    EXPECT_EQ(m_player.files.current, "/app/");
}

TEST_F(StartTest, EverySettingReachesTheLibraryAsItIsTold)
{
    // `settings` stand apart by "|". Of the calls that begin with `call` the rest is looked at,
    // with a ";" behind each.
    const auto expect =
        [this](const char* section, const char* settings, const char* call, const char* rests) {
            std::istringstream texts(settings);
            std::vector<std::string> keys;
            for (std::string text; std::getline(texts, text, '|');) {
                keys.push_back(text.substr(0, text.find('=')));
                Set(section, keys.back(), text.substr(text.find('=') + 1));
            }
            EXPECT_TRUE(Run());
            std::string found;
            for (const std::string& line : m_log)
                if (line.starts_with(call))
                    found += line.substr(std::strlen(call)) + ";";
            EXPECT_EQ(found, rests) << settings;
            for (const std::string& key : keys)
                Set(section, key, "");
        };
    expect("Sound", "LogarithmicVolume=1", "BASS_SetConfig 7 ", "0;");
    expect("Sound", "FloatDSP=true", "BASS_SetConfig 9 ", "-1;");
    expect("Sound", "3DAlgorithm=NORMAL", "BASS_SetConfig 10 ", "1;");
    expect("Sound", "3DAlgorithm=Good", "BASS_SetConfig 10 ", "3;");
    expect("Sound", "3DAlgorithm=Highest", "BASS_SetConfig 10 ", "2;");
    expect("Sound", "3DAlgorithm=Off", "BASS_SetConfig 10 ", "");
    expect("Sound", "PlaybackBuffer=250 ms", "BASS_SetConfig 0 ", "250;");
    expect("Sound", "DownloadBuffer=7", "BASS_SetConfig 12 ", "7;");
    expect("Sound", "InternetConnectionTimeout=x", "BASS_SetConfig 11 ", "0;");
    for (const char* none : {"EAX_Preset=None", "EAX_Preset=swer pipe", "EAX_Preset=Sewer Pipe"})
        expect("Sound", none, "BASS_SetEAX", "");
    expect("Sound", "EAX_Preset=Generic", "BASS_SetEAXParameters ", "0 0 0 0;");
    expect("Sound", "EAX_Preset=Auditorium", "BASS_SetEAXParameters ", "6 0 0 0;");
    expect("Sound", "EAX_Preset=Forest", "BASS_SetEAXParameters ", "15 0 0 0;");
    expect("Sound", "EAX_Preset=Psychotic", "BASS_SetEAXParameters ", "25 0 0 0;");

    const char* const proxy = "BASS_SetConfigPtr 17 ";
    expect("Setup", "Proxy=p|Port=1", proxy, "");
    Set("Setup", "UseDefaultNetSettings", "False");
    expect("Setup", "Proxy=p|Port=1|Username=u|Password=w", proxy, "'u:w@p:1';");
    expect("Setup", "Proxy=p|Username=u|Password=w", proxy, "'u:w@';");
    expect("Setup", "Proxy=p|Port=1|Username=u", proxy, "'p:1';");
    expect("Setup", "Port=1|Password=w", proxy, "'';");

    expect("Files", "Extensions=*.mp3", "associate", "");
    Set("Files", "CheckAssociationOnStart", "true");
    expect("Files", "ManageAudioCds=True", "associate", ": the program;");
    expect("Files", "Extensions=*.\xC3\x84;", "associate", " \xC3\xA4;: the program;");
    expect("Files", "Extensions=*.a;x;*.b", "associate", " a;: the program;");
    expect("Files", "Extensions=*.;*.b", "associate", " ; b;: the program;");
    expect("Display", "ShowIn=taskbar and system tray", "tray", "");
}

} // namespace
} // namespace velmo
