#pragma once

#include "lifecycle/StartCore.h"
#include "support/FakePlayer.h"
#include "support/SmallFakes.h"

#include <gtest/gtest.h>

namespace velmo {

/// A start over fakes. All that it does to the world is written into one list, in order.
class StartTest : public ::testing::Test
{
protected:
    class FakeAssociations final : public ports::Associations
    {
    public:
        explicit FakeAssociations(std::vector<std::string>& log)
            : m_log(log)
        {}
        void AssociateExtension(const std::string& extension, bool on) override
        {
            m_log.push_back((on ? "associate " : "give back ") + extension);
        }
        void AssociateAudioCD(bool /*on*/) override { m_log.emplace_back("associate the CD"); }
        void RegisterProgId() override { m_log.emplace_back("associate: the program"); }

    private:
        std::vector<std::string>& m_log;
    };

    StartTest()
    {
        for (const char* file : {"/program/libbass.so", "/program/libbass_fx.so", "/m/a.mp3"})
            m_player.files.files[file] = "";
        const modBass table = m_player.bass.Table();
        const auto address = [](auto* function) { return reinterpret_cast<void*>(function); };
        m_libraries.libraries["/program/libbass.so"] = {
            .functions = {{"BASS_GetVersion", address(table.BASS_GetVersion)},
                          {"BASS_Init", address(table.BASS_Init)},
                          {"BASS_SetConfig", address(table.BASS_SetConfig)},
                          {"BASS_SetConfigPtr", address(table.BASS_SetConfigPtr)},
                          {"BASS_GetInfo", address(table.BASS_GetInfo)},
                          {"BASS_SetEAXParameters", address(table.BASS_SetEAXParameters)},
                          {"BASS_PluginLoad", address(table.BASS_PluginLoad)},
                          {"BASS_PluginGetInfo", address(table.BASS_PluginGetInfo)}},
            .otherwise = address(table.BASS_Stop)
        };
        m_libraries.libraries["/program/libbass_fx.so"].functions["BASS_FX_GetVersion"] =
            address(&test::FakeBass::EffectsVersion);
        m_libraries.onOpen = [this](const std::string& path) { m_log.push_back("open " + path); };
        m_player.dialogs.whileOpen = [this](const auto& box) {
            EXPECT_EQ(box.style, ports::MessageStyle::Critical);
            m_log.push_back("box " + box.title + ": " + box.text);
        };
    }

    /// Starts with an empty list of what was done.
    bool Run(StartKind kind = StartKind::Process)
    {
        m_log.clear();
        if (!m_core.Run(kind))
            return false;
        m_core.OpenList();
        return true;
    }

    test::FakePlayer m_player;
    std::vector<std::string>& m_log = m_player.bass.calls;
    test::FakeApplication m_application;
    test::FakeLibraries& m_libraries = m_player.libraries;
    test::FakeTray m_tray{m_log};
    FakeAssociations m_associations{m_log};
    modBass m_table;
    PluginTable m_plugins;
    ProxySettings m_proxy{m_table, m_player.settings};
    forms::frmResources m_resources;
    modSystray m_systray{m_tray, m_player.wmain, m_resources};
    ShutdownState m_shutdown;
    StartCore m_core{
        {m_application,   m_player.files, m_libraries, m_player.dialogs, m_associations},
        {m_player.settings,
         m_table,               m_plugins,
         m_proxy, m_player.state,
         m_systray, m_shutdown,
         m_resources, m_player.adding},
        {.createMainWindow =
             [this] {
                 m_log.emplace_back("window");
                 return nullptr;
             },      .disableEqualizer = [this] { m_log.emplace_back("no equalizer"); },
         .buildPalette = [this] { m_log.emplace_back("palette"); }                     },
    };
};

} // namespace velmo
