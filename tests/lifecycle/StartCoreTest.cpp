#include "lifecycle/StartFixture.h"

#include <gmock/gmock.h>

namespace velmo {
namespace {

TEST_F(StartTest, GoesThroughItsListInOrder)
{
    m_application.commandLine = "/m/a.mp3";
    m_player.files.files["/program/plugins/bass_a.so"] = "";
    m_player.bass.plugins["/program/plugins/bass_a.so"] = {};
    m_player.SetAll("Sound", "Frequency=48000 Hz|LogarithmicVolume=TRUE");
    m_player.SetAll("Sound", "EAX_Preset=Swer Pipe|EAX_RVolume=0.5|EAX_RDecay=-1");
    m_player.Set("Display", "ShowIn", "Taskbar and System Tray");
    m_player.Set("Options", "AlwaysOnTop", "true");
    m_player.SetAll("Files", "CheckAssociationOnStart=TRUE|Extensions=*.MP3;*.Ogg");
    m_player.Set("ShutDownSystem", "Status", "Enabled");
    m_player.Set("Setup", "UseDefaultNetSettings", "FALSE");
    EXPECT_TRUE(Run());
    EXPECT_EQ(m_player.bass.TakeCalls(),
              "open /program/libbass.so; window; BASS_Init -1 48000 260; "
              "open /program/libbass_fx.so; BASS_PluginLoad /program/plugins/bass_a.so 0; palette; "
              "BASS_SetConfig 7 -1; BASS_SetConfig 8 -1; BASS_SetConfig 9 0; BASS_SetConfig 10 0; "
              "BASS_SetConfig 0 500; BASS_SetConfig 12 5000; BASS_SetConfig 11 5000; "
              "BASS_GetInfo; BASS_SetEAXParameters 21 0.5 -1 0; tray Velmo Player; "
              "associate mp3; associate ogg; associate: the program; BASS_SetConfigPtr 17 ''");
    EXPECT_EQ(m_player.state.CurrentTitleText, "Velmo Player - Made to be heard!    ***  ");
    EXPECT_TRUE(m_systray.TrayIconShown);
    EXPECT_TRUE(m_resources.submnuAlwaysOnTop.Checked);
    EXPECT_EQ(m_shutdown.ShutdownStatus, "Enabled");
    EXPECT_EQ(m_player.files.current, "/app/");
    EXPECT_EQ(m_player.playlist.pl.Row(1).Path, "/m/a.mp3");

    // A second time all is built anew, from what the settings say now, and the list is read.
    m_player.playlist.pl.Clear();
    m_player.Set("Display", "ShowIn", "Taskbar");
    m_player.Set("Options", "AlwaysOnTop", "false");
    m_player.Set("ShutDownSystem", "Status", "enabled");
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
    const std::string end = "\nApplication will terminate.";
    EXPECT_EQ(m_player.bass.TakeCalls(),
              "open /program/libbass.so; window; BASS_Init -1 44100 260; "
              "box Error: Can't initialize digital sound system."
                  + end);
    const std::string wrongVersion =
        "open /program/libbass.so; box BASS.DLL: BASS version 2.4 was not loaded." + end;
    m_player.bass.version = 0x02030000;
    EXPECT_FALSE(Run());
    EXPECT_EQ(m_player.bass.TakeCalls(), wrongVersion);
    m_player.bass.version = 0x02040000;
    m_libraries.libraries["/program/libbass.so"].functions["BASS_ChannelPlay"] = nullptr;
    EXPECT_FALSE(Run()) << "a library that lacks a function counts as the wrong one";
    EXPECT_EQ(m_player.bass.TakeCalls(), wrongVersion);
    m_player.files.files.erase("/program/libbass.so");
    EXPECT_FALSE(Run());
    EXPECT_EQ(m_player.bass.TakeCalls(), "box BASS.DLL: BASS.DLL does not exist." + end);
}

TEST_F(StartTest, WithoutEqualizerAddOnTheProgramGoesOn)
{
    const std::string opened = "open /program/libbass_fx.so; ";
    const std::string wrong = "box BASS_FX.DLL: An incorrect version of BASS_FX.DLL was loaded "
                              "(2.4 is required)\nEqualizer will be disabled.; ";
    const std::string missing =
        "box BASS_FX.DLL: BASS_FX.DLL does not exists!\nEqualizer will be disabled.; ";
    const std::string off = "no equalizer; ";
    const auto expect = [this](const std::string& behindTheDevice) {
        EXPECT_TRUE(Run());
        const std::string calls = m_player.bass.TakeCalls();
        EXPECT_THAT(calls, ::testing::HasSubstr(" 260; " + behindTheDevice + "palette; "));
    };
    m_player.bass.effectsVersion = 0x02030000;
    expect(opened + wrong + off);
    m_player.files.files.erase("/program/libbass_fx.so");
    m_libraries.libraries.erase("/program/libbass_fx.so");
    expect(missing + off + opened + wrong + off);

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
    m_player.SetAll("Plugins", "bass_off.so=FALSE|bass_other.so=yes");
    EXPECT_TRUE(Run());
    std::erase_if(m_log, [](const auto& call) { return !call.starts_with("BASS_Plugin"); });
    EXPECT_EQ(m_player.bass.TakeCalls(),
              "BASS_PluginLoad /program/plugins/bass_both.so 0; "
              "BASS_PluginLoad /program/plugins/bass_none.so 0; "
              "BASS_PluginLoad /program/plugins/bass_refused.so 0; "
              "BASS_PluginLoad /app/plugins/bass_user.so 0");
    std::string rows;
    for (const PluginEntry& row : m_plugins.Entries)
        rows += row.FileName + "|" + row.HandleText + "|" + (row.Loaded ? "yes" : "no") + "|"
                + row.Extensions + "|" + row.Formats + "\n";
    EXPECT_EQ(rows,
              "||no||\n"
              "bass_both.so|101|yes|*.ape;*.mac#*.flac|APE#FLAC\n"
              "bass_none.so|102|yes||\n"
              "bass_off.so|0|no||\n"
              "bass_user.so|103|yes|*.flac|FLAC\n");

    FillFormats(m_table, m_plugins.Entries[4], 103);
    EXPECT_EQ(m_plugins.Entries[4].Formats, "LAC#FLAC") << "the second time costs a character";
}

TEST_F(StartTest, EverySettingReachesTheLibraryAsItIsTold)
{
    // Of the calls that begin with `call` the rest is looked at, with a ";" behind each.
    const auto expect = [this](const char* section,
                               const char* settings,
                               std::string_view call,
                               const char* rests) {
        const test::FakeSettings before = m_player.settingsFile;
        m_player.SetAll(section, settings);
        EXPECT_TRUE(Run());
        m_player.settingsFile = before;
        std::string found;
        for (const std::string& line : m_log)
            if (line.starts_with(call))
                found += line.substr(call.size()) + ";";
        EXPECT_EQ(found, rests) << settings;
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
    expect("Sound", "EAX_Preset=Psychotic", "BASS_SetEAXParameters ", "25 0 0 0;");

    const char* const proxy = "BASS_SetConfigPtr 17 ";
    expect("Setup", "Proxy=p|Port=1", proxy, "");
    m_player.Set("Setup", "UseDefaultNetSettings", "False");
    expect("Setup", "Proxy=p|Port=1|Username=u|Password=w", proxy, "'u:w@p:1';");
    expect("Setup", "Proxy=p|Username=u|Password=w", proxy, "'u:w@';");
    expect("Setup", "Proxy=p|Port=1|Username=u", proxy, "'p:1';");
    expect("Setup", "Port=1|Password=w", proxy, "'';");

    expect("Files", "Extensions=*.mp3", "associate", "");
    m_player.Set("Files", "CheckAssociationOnStart", "true");
    expect("Files", "ManageAudioCds=True", "associate", ": the program;");
    expect("Files", "Extensions=*.\xC3\x84;", "associate", " \xC3\xA4;: the program;");
    expect("Files", "Extensions=*.a;x;*.b", "associate", " a;: the program;");
    expect("Files", "Extensions=*.;*.b", "associate", " ; b;: the program;");
    expect("Display", "ShowIn=taskbar and system tray", "tray", "");
}

} // namespace
} // namespace velmo
