// Plugins through the C functions: loading, refusing, freeing while they play.
#include "engine/abi/EngineTest.h"

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <thread>

#include <dlfcn.h>

namespace velmo::engine::test {
namespace {

std::string Library(const std::string& name)
{
    return std::string(VELMO_TEST_PLUGINS) + "/" + name + ".so";
}

bool IsMapped(const std::string& path)
{
    void* const library = dlopen(path.c_str(), RTLD_NOW | RTLD_NOLOAD);
    return library != nullptr && dlclose(library) == 0;
}

int LoadingCode(const std::string& path)
{
    return Code(BASS_PluginLoad(path.c_str(), 0));
}

class Plugins : public EngineTest
{
protected:
    HPLUGIN LoadTone() const
    {
        const HPLUGIN plugin = BASS_PluginLoad(m_tonePlugin.c_str(), 0);
        EXPECT_EQ(Code(plugin), BASS_OK);
        return plugin;
    }
    bool IsToneMapped() const { return IsMapped(m_tonePlugin); }

    /// A file that the tone plugin plays, in its manner.
    std::string WriteTone(std::size_t frames, const std::string& manner = "plain") const
    {
        return m_directory.Write("a.tone", "TONE " + std::to_string(frames) + ' ' + manner);
    }

    void TearDown() override
    {
        BASS_PluginFree(0);
        EngineTest::TearDown();
    }

    std::string m_tonePlugin = Library("tone");
};

TEST_F(Plugins, OnlyAUsableLibraryIsLoadedAndOnlyOnce)
{
    EXPECT_EQ(Code(BASS_PluginLoad(nullptr, 0)), BASS_ERROR_ILLPARAM);
    EXPECT_EQ(LoadingCode("/nonexistent/bass.so"), BASS_ERROR_FILEOPEN);
    EXPECT_EQ(LoadingCode(File("")), BASS_ERROR_FILEOPEN);
    EXPECT_EQ(LoadingCode(m_directory.Write("text.so", "no library")), BASS_ERROR_FILEFORM);
    for (const char* bad : {"bad0", "bad1", "bad2"}) {
        EXPECT_EQ(LoadingCode(Library(bad)), BASS_ERROR_FILEFORM) << bad;
        EXPECT_FALSE(IsMapped(Library(bad))) << bad;
    }

    const HPLUGIN plugin = LoadTone();
    EXPECT_EQ(plugin >> 28U, 4U) << "no channel's and no effect's";
    const std::string link = File("link.so");
    std::filesystem::create_symlink(m_tonePlugin, link);
    EXPECT_EQ(LoadingCode(link), BASS_ERROR_ALREADY);
    const BASS_PLUGININFO* const info = BASS_PluginGetInfo(plugin);
    ASSERT_NE(info, nullptr);
    EXPECT_EQ(info->version, 0x01020304U);
    ASSERT_EQ(info->formatc, 2U);
    EXPECT_STREQ(info->formats[0].exts, "*.tone;*.ton");
    EXPECT_STREQ(info->formats[1].name, "Tone 2");
    for (const HPLUGIN none : {0U, plugin + 1, 0x10000001U})
        EXPECT_EQ(Code(BASS_PluginGetInfo(none)), BASS_ERROR_HANDLE);

    ASSERT_TRUE(BASS_PluginFree(plugin));
    EXPECT_FALSE(IsToneMapped());
    EXPECT_EQ(Code(BASS_PluginFree(plugin)), BASS_ERROR_HANDLE);
    EXPECT_EQ(Code(BASS_PluginGetInfo(plugin)), BASS_ERROR_HANDLE);
    EXPECT_TRUE(BASS_PluginFree(0)) << "none left is well";
    const std::u16string wide(link.begin(), link.end());
    // As the function takes both kinds of text.
    const auto* const text = reinterpret_cast<const char*>(wide.c_str());
    const HPLUGIN again = BASS_PluginLoad(text, BASS_UNICODE);
    EXPECT_EQ(Code(again), BASS_OK);
    EXPECT_NE(again, plugin) << "handles are given once";
    EXPECT_EQ(LoadingCode(VELMO_PLUGINS "/bassflac.so"), BASS_OK);
    EXPECT_TRUE(BASS_PluginFree(0)) << "all together";
    EXPECT_FALSE(IsToneMapped() || IsMapped(VELMO_PLUGINS "/bassflac.so"));
}

TEST_F(Plugins, ThoseOfTheEngineTellTheirFormatsAndCanBeUnmapped)
{
    const auto expect = [](const std::string& name, const char* mask) {
        const std::string path = VELMO_PLUGINS + ("/" + name + ".so");
        const HPLUGIN plugin = BASS_PluginLoad(path.c_str(), 0);
        const BASS_PLUGININFO* const info = BASS_PluginGetInfo(plugin);
        ASSERT_NE(info, nullptr) << path;
        ASSERT_GE(info->formatc, 1U);
        EXPECT_TRUE(std::string(info->formats[0].exts).starts_with(mask)) << path;
        EXPECT_TRUE(BASS_PluginFree(plugin));
        EXPECT_FALSE(IsMapped(path));
    };
    expect("bassflac", "*.flac");
    expect("bassopus", "*.opus");
    expect("basswv", "*.wv");
    expect("bassffmpeg", "*.m4a");
    EXPECT_FALSE(IsMapped(VELMO_PLUGINS "/ffmpeg/decoder.so")) << "no file of its own was opened";
}

TEST_F(Plugins, AFreedOneEndsItsChannelsAndStaysMappedUntilTheyGo)
{
    Init("null");
    const std::string tone = WriteTone(4410000);
    const HPLUGIN plugin = LoadTone();
    const DWORD kept = OpenStream(tone);
    const DWORD selfFreeing = OpenStream(tone, BASS_STREAM_AUTOFREE);
    const DWORD foreign = OpenStream(WriteWav("a.wav", Noise(441000)));
    for (const DWORD channel : {kept, selfFreeing, foreign})
        ASSERT_TRUE(BASS_ChannelPlay(channel, 0));
    AwaitHeard(kept, 1);

    ASSERT_TRUE(BASS_PluginFree(plugin));
    EXPECT_EQ(BASS_ChannelIsActive(kept), DWORD{BASS_ACTIVE_STOPPED});
    EXPECT_EQ(BASS_ChannelIsActive(foreign), DWORD{BASS_ACTIVE_PLAYING});
    EXPECT_EQ(BASS_ChannelGetLength(kept, BASS_POS_BYTE), QWORD{8820000});
    EXPECT_EQ(Code(BASS_ChannelStop(selfFreeing)), BASS_ERROR_HANDLE);
    EXPECT_EQ(Code(BASS_StreamCreateFile(0, tone.c_str(), 0, 0, 0)), BASS_ERROR_FILEFORM);
    EXPECT_TRUE(IsToneMapped());
    EXPECT_TRUE(BASS_StreamFree(kept));
    EXPECT_TRUE(Until([this] { return !IsToneMapped(); }));
    EXPECT_EQ(BASS_ChannelIsActive(foreign), DWORD{BASS_ACTIVE_PLAYING});
}

TEST_F(Plugins, GoWithTheEngineAndWhatTheyDoWrongStaysWithTheirFile)
{
    const struct
    {
        const char* manner;
        int code;             ///< of the opening
        std::ptrdiff_t heard; ///< samples that sound
    } cases[] = {
        {"plain",       BASS_OK,             2000},
        {"throw-probe", BASS_ERROR_FILEFORM, 0   },
        {"throw-open",  BASS_ERROR_FILEOPEN, 0   },
        {"no-rate",     BASS_ERROR_FORMAT,   0   },
        {"no-channels", BASS_ERROR_FORMAT,   0   },
        {"no-end",      BASS_ERROR_FORMAT,   0   },
        {"throw-read",  BASS_OK,             0   },
        {"throw-seek",  BASS_OK,             0   },
        {"throw-close", BASS_OK,             2000},
        {"too-much",    BASS_OK,             2000},
        {"no-numbers",  BASS_OK,             0   },
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.manner);
        const HPLUGIN plugin = LoadTone(); // before the device is open, too
        InitFast();
        const DWORD channel = BASS_StreamCreateFile(0, WriteTone(1000, c.manner).c_str(), 0, 0, 0);
        EXPECT_EQ(Code(channel), c.code);
        if (c.code == BASS_OK)
            PlayToEnd(channel);
        const std::vector<std::int16_t> rendered = Rendered();
        EXPECT_EQ(std::ranges::count(rendered, 8192), c.heard);
        EXPECT_EQ(BASS_PluginGetInfo(plugin), nullptr);
        EXPECT_FALSE(IsToneMapped());
    }
}

TEST_F(Plugins, AreLoadedAndFreedWhileOthersOpenAndPlay)
{
    InitFast();
    const std::string tone = WriteTone(3000);
    std::atomic<int> opened = 0;
    std::jthread opener([&](const std::stop_token& stop) {
        while (!stop.stop_requested()) {
            const DWORD channel =
                BASS_StreamCreateFile(0, tone.c_str(), 0, 0, BASS_STREAM_AUTOFREE);
            opened += channel != 0 ? 1 : 0;
            BASS_ChannelPlay(channel, 0);
            if (opened % 2 == 0)
                BASS_ChannelStop(channel);
        }
    });
    for (int round = 0; round < 40; ++round) {
        const HPLUGIN plugin = LoadTone();
        const int before = opened;
        EXPECT_TRUE(Until([&] { return opened > before; }));
        const DWORD own = BASS_StreamCreateFile(0, tone.c_str(), 0, 0, 0);
        BASS_ChannelPlay(own, 0);
        EXPECT_TRUE(BASS_PluginFree(plugin));
        EXPECT_EQ(BASS_ChannelIsActive(own), DWORD{BASS_ACTIVE_STOPPED});
        BASS_StreamFree(own);
    }
    opener = {};
    EXPECT_TRUE(Until([this] { return !IsToneMapped(); }));
}

} // namespace
} // namespace velmo::engine::test
