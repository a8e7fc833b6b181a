// Plugins through the C functions: loading, refusing, freeing while they play.
#include "engine/abi/EngineTest.h"

#include <algorithm>
#include <atomic>
#include <fstream>
#include <thread>

#include <dlfcn.h>

namespace velmo::engine::test {
namespace {

class Plugins : public EngineTest
{
protected:
    static std::string Library(const std::string& name)
    {
        return std::string(VELMO_TEST_PLUGINS) + "/" + name + ".so";
    }

    static HPLUGIN Load(const std::string& name)
    {
        return BASS_PluginLoad(Library(name).c_str(), 0);
    }

    static bool IsMapped(const std::string& name) { return IsPathMapped(Library(name)); }

    static bool IsPathMapped(const std::string& path)
    {
        void* const library = dlopen(path.c_str(), RTLD_NOW | RTLD_NOLOAD);
        if (library != nullptr)
            dlclose(library);
        return library != nullptr;
    }

    /// A file that the tone plugin plays, in its manner.
    std::string WriteTone(std::size_t frames, const std::string& manner = "plain") const
    {
        std::ofstream(File("a.tone")) << "TONE " << frames << ' ' << manner << '\n';
        return File("a.tone").string();
    }

    static int OpeningCode(const std::string& path)
    {
        const DWORD channel = BASS_StreamCreateFile(0, path.c_str(), 0, 0, 0);
        const int code = BASS_ErrorGetCode();
        EXPECT_EQ(channel == 0, code != 0);
        BASS_StreamFree(channel);
        return code;
    }

    void TearDown() override
    {
        BASS_PluginFree(0);
        EngineTest::TearDown();
    }
};

TEST_F(Plugins, OnlyAUsableLibraryIsLoadedAndOnlyOnce)
{
    const auto code = [](const char* path) {
        EXPECT_EQ(BASS_PluginLoad(path, 0), 0U);
        return BASS_ErrorGetCode();
    };
    std::ofstream(File("text.so")) << "no library";
    EXPECT_EQ(code(nullptr), BASS_ERROR_ILLPARAM);
    EXPECT_EQ(code("/nonexistent/bass.so"), BASS_ERROR_FILEOPEN);
    EXPECT_EQ(code(""), BASS_ERROR_FILEOPEN);
    EXPECT_EQ(code(File("").c_str()), BASS_ERROR_FILEOPEN);
    EXPECT_EQ(code(File("text.so").c_str()), BASS_ERROR_FILEFORM);
    for (const char* bad : {"bad0", "bad1", "bad2", "bad3"}) {
        EXPECT_EQ(code(Library(bad).c_str()), BASS_ERROR_FILEFORM) << bad;
        EXPECT_FALSE(IsMapped(bad)) << bad;
    }

    const HPLUGIN plugin = Load("tone");
    ASSERT_NE(plugin, 0U) << BASS_ErrorGetCode();
    EXPECT_EQ(plugin >> 28U, 4U) << "no channel's and no effect's";
    std::filesystem::create_symlink(Library("tone"), File("link.so"));
    EXPECT_EQ(code(File("link.so").c_str()), BASS_ERROR_ALREADY);
    const BASS_PLUGININFO* const info = BASS_PluginGetInfo(plugin);
    ASSERT_NE(info, nullptr);
    EXPECT_EQ(info->version, 0x01020304U);
    ASSERT_EQ(info->formatc, 2U);
    EXPECT_STREQ(info->formats[0].exts, "*.tone;*.ton");
    EXPECT_STREQ(info->formats[1].name, "Tone 2");
    for (const HPLUGIN none : {0U, plugin + 1, 0x10000001U})
        EXPECT_EQ(BASS_PluginGetInfo(none), nullptr);
    EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_HANDLE);

    ASSERT_TRUE(BASS_PluginFree(plugin));
    EXPECT_FALSE(IsMapped("tone"));
    EXPECT_FALSE(BASS_PluginFree(plugin));
    EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_HANDLE);
    EXPECT_EQ(BASS_PluginGetInfo(plugin), nullptr);
    EXPECT_TRUE(BASS_PluginFree(0)) << "none left is well";
    const std::string link = File("link.so").string();
    const std::u16string wide(link.begin(), link.end());
    // NOLINTNEXTLINE(*-reinterpret-cast): as the function takes both kinds of text
    const auto* const text = reinterpret_cast<const char*>(wide.c_str());
    const HPLUGIN again = BASS_PluginLoad(text, BASS_UNICODE);
    EXPECT_NE(again, 0U);
    EXPECT_NE(again, plugin) << "handles are given once";
}

TEST_F(Plugins, OneWithoutFormatsIsLoadedAndAllAreFreedTogether)
{
    const HPLUGIN bare = Load("bare");
    ASSERT_NE(bare, 0U);
    ASSERT_NE(Load("tone"), 0U);
    EXPECT_EQ(BASS_PluginGetInfo(bare)->formatc, 0U);
    EXPECT_TRUE(BASS_PluginFree(0));
    EXPECT_FALSE(IsMapped("bare") || IsMapped("tone"));
}

TEST_F(Plugins, ThoseOfTheEngineTellTheirFormatsAndCanBeUnmapped)
{
    const struct
    {
        const char* name;
        const char* mask;
    } cases[] = {
        {"bassflac",   "*.flac"},
        {"bassopus",   "*.opus"},
        {"basswv",     "*.wv"  },
        {"bassffmpeg", "*.m4a" },
    };
    for (const auto& c : cases) {
        const std::string path = std::string(VELMO_PLUGINS) + "/" + c.name + ".so";
        const HPLUGIN plugin = BASS_PluginLoad(path.c_str(), 0);
        const BASS_PLUGININFO* const info = BASS_PluginGetInfo(plugin);
        ASSERT_NE(info, nullptr) << path;
        ASSERT_GE(info->formatc, 1U);
        EXPECT_TRUE(std::string(info->formats[0].exts).starts_with(c.mask)) << path;
        EXPECT_TRUE(BASS_PluginFree(plugin));
        EXPECT_FALSE(IsPathMapped(path));
    }
    EXPECT_FALSE(IsPathMapped(std::string(VELMO_PLUGINS) + "/ffmpeg/decoder.so"))
        << "no file of its own was opened";
}

TEST_F(Plugins, AFreedOneEndsItsChannelsAndStaysMappedUntilTheyGo)
{
    Init("null");
    const std::string tone = WriteTone(4410000);
    const HPLUGIN plugin = Load("tone");
    const DWORD kept = OpenStream(tone);
    const DWORD selfFreeing = OpenStream(tone, BASS_STREAM_AUTOFREE);
    const DWORD foreign = OpenStream(WriteWav("a.wav", Noise(441000)));
    for (const DWORD channel : {kept, selfFreeing, foreign})
        ASSERT_TRUE(BASS_ChannelPlay(channel, 0));
    ASSERT_TRUE(Until([=] { return BASS_ChannelGetPosition(kept, BASS_POS_BYTE) > 0; }));

    ASSERT_TRUE(BASS_PluginFree(plugin));
    EXPECT_EQ(BASS_ChannelIsActive(kept), DWORD{BASS_ACTIVE_STOPPED});
    EXPECT_EQ(BASS_ChannelIsActive(foreign), DWORD{BASS_ACTIVE_PLAYING});
    EXPECT_EQ(BASS_ChannelGetLength(kept, BASS_POS_BYTE), QWORD{8820000});
    EXPECT_EQ(BASS_ChannelGetLength(selfFreeing, BASS_POS_BYTE), NoPosition);
    EXPECT_EQ(BASS_ErrorGetCode(), BASS_ERROR_HANDLE);
    EXPECT_EQ(OpeningCode(tone), BASS_ERROR_FILEFORM);
    EXPECT_TRUE(IsMapped("tone"));
    EXPECT_TRUE(BASS_StreamFree(kept));
    EXPECT_TRUE(Until([] { return !IsMapped("tone"); }));
    EXPECT_EQ(BASS_ChannelIsActive(foreign), DWORD{BASS_ACTIVE_PLAYING});
}

TEST_F(Plugins, GoWithTheEngineAndComeBack)
{
    const std::string tone = WriteTone(1000);
    HPLUGIN before = 0;
    for (int round = 0; round < 3; ++round) {
        const HPLUGIN plugin = Load("tone");
        ASSERT_NE(plugin, 0U) << "before the device is open, too";
        EXPECT_NE(plugin, before);
        before = plugin;
        InitFast();
        PlayToEnd(OpenStream(tone));
        const std::vector<std::int16_t> rendered = Rendered();
        EXPECT_EQ(std::ranges::count(rendered, 8192), 2000);
        EXPECT_EQ(BASS_PluginGetInfo(plugin), nullptr);
        EXPECT_FALSE(IsMapped("tone"));
    }
}

TEST_F(Plugins, WhatADecoderDoesWrongStaysWithItsFile)
{
    const struct
    {
        const char* manner;
        int code;             ///< of the opening
        std::ptrdiff_t heard; ///< samples that sound
    } cases[] = {
        {"plain",       0,                   2000},
        {"throw-probe", BASS_ERROR_FILEFORM, 0   },
        {"throw-open",  BASS_ERROR_FILEOPEN, 0   },
        {"no-rate",     BASS_ERROR_FORMAT,   0   },
        {"no-channels", BASS_ERROR_FORMAT,   0   },
        {"no-end",      BASS_ERROR_FORMAT,   0   },
        {"throw-read",  0,                   0   },
        {"throw-seek",  0,                   0   },
        {"throw-close", 0,                   2000},
        {"too-much",    0,                   2000},
        {"no-numbers",  0,                   0   },
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.manner);
        const std::string tone = WriteTone(1000, c.manner);
        ASSERT_NE(Load("tone"), 0U);
        InitFast();
        EXPECT_EQ(OpeningCode(tone), c.code);
        if (c.code == 0)
            PlayToEnd(OpenStream(tone));
        const std::vector<std::int16_t> rendered = Rendered();
        EXPECT_EQ(std::ranges::count(rendered, 8192), c.heard);
        EXPECT_FALSE(IsMapped("tone"));
    }
}

TEST_F(Plugins, AreLoadedAndFreedWhileOthersOpenAndPlay)
{
    InitFast();
    const std::string tone = WriteTone(3000);
    std::atomic<bool> done = false;
    std::atomic<int> opened = 0;
    std::thread opener([&] {
        while (!done) {
            const DWORD channel =
                BASS_StreamCreateFile(0, tone.c_str(), 0, 0, BASS_STREAM_AUTOFREE);
            opened += channel != 0 ? 1 : 0;
            BASS_ChannelPlay(channel, 0);
            if (opened % 2 == 0)
                BASS_ChannelStop(channel);
        }
    });
    for (int round = 0; round < 40; ++round) {
        const HPLUGIN plugin = Load("tone");
        EXPECT_NE(plugin, 0U);
        const int before = opened;
        EXPECT_TRUE(Until([&] { return opened > before; }));
        const DWORD own = BASS_StreamCreateFile(0, tone.c_str(), 0, 0, 0);
        BASS_ChannelPlay(own, 0);
        EXPECT_TRUE(BASS_PluginFree(plugin));
        EXPECT_EQ(BASS_ChannelIsActive(own), DWORD{BASS_ACTIVE_STOPPED});
        BASS_StreamFree(own);
    }
    done = true;
    opener.join();
    EXPECT_TRUE(Until([] { return !IsMapped("tone"); }));
}

} // namespace
} // namespace velmo::engine::test
