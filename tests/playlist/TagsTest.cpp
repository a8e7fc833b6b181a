#include "support/FakePlayer.h"

#include <gmock/gmock.h>

namespace velmo {
namespace {

TEST(Tags, OfEachFieldTheLongerTagWinsAndId3v1WhereBothAreAsLong)
{
    struct Case
    {
        const char* artist;
        const char* title;
        const char* artistV1;
        const char* titleV1;
        const char* expected;
    };
    const Case cases[] = {
        {"Long artist",      "T",     "Artist", "Title of v1", "Long artist - Title of v1"},
        {"same",             "size",  "SAME",   "SIZE",        "SAME - SIZE"              },
        {"ABBA",             "",      "",       "",            "ABBA"                     },
        {"",                 "Title", "",       "",            "Title"                    },
        {"",                 "",      "",       "",            ""                         },
        {"A-",               "",      "",       "",            "A-"                       },
        {"",                 "- ",    "",       "",            ""                         },
        {"\xC3\xA9\xC3\xA9", "t",     "abc",    "t",           "abc - t"                  }, // characters count, not bytes
    };
    for (const Case& c : cases) {
        test::FakePlayer player;
        player.AddSound("/m/a.mp3", {.seconds = 1});
        player.tagLibrary.formatTags = {
            {"/m/a.mp3 %ARTI", c.artist},
            {"/m/a.mp3 %TITL", c.title }
        };
        player.tagLibrary.id3v1Tags = {
            {"/m/a.mp3 %ARTI", c.artistV1},
            {"/m/a.mp3 %TITL", c.titleV1 }
        };
        const DWORD channel = player.table.BASS_StreamCreateFile(0, u"/m/a.mp3", 0, 0, 0);
        EXPECT_EQ(player.tags.MakeTagTitle(channel), c.expected);
        EXPECT_EQ(player.files.current, "/app/");
    }
}

TEST(Tags, TitleAndLengthComeFromOneOpening)
{
    test::FakePlayer player;
    player.AddSound("/m/tune.xm", {.seconds = 61.5, .isModule = true});
    std::string title = "old";
    std::string length = "old";
    EXPECT_FALSE(player.tags.ReadFileTitleAndLength("/m/gone.mp3", title, length));
    EXPECT_EQ(title + length, "") << "no name in place of a title";
    player.bass.calls.clear();
    EXPECT_TRUE(player.tags.ReadFileTitleAndLength("/m/tune.xm", title, length));
    EXPECT_EQ(title, "tun");
    EXPECT_EQ(length, "01:02");
    using ::testing::ElementsAre;
    EXPECT_THAT(player.bass.calls,
                ElementsAre("BASS_StreamCreateFile /m/tune.xm",
                            "BASS_StreamCreateURL",
                            "BASS_MusicLoad /m/tune.xm",
                            "BASS_ChannelStop 101",
                            "BASS_StreamFree 101",
                            "BASS_MusicFree 101"));
}

TEST(Tags, TheFileNameLosesFourCharactersWhateverTheyAre)
{
    const std::pair<const char*, const char*> cases[] = {
        {"/m/song.mp3",         "song"        },
        {"/m/tune.xm",          "tun"         },
        {"/m/song.flac",        "song."       },
        {"/m/a.it",             ""            },
        {"/m/\xFF\xC3\xA9.ogg", "\xFF\xC3\xA9"},
    };
    test::FakePlayer player;
    for (const auto& [path, title] : cases) {
        player.files.files[path] = "";
        std::string rewritten = path;
        EXPECT_EQ(player.tags.FileNameTitle(rewritten), title);
        EXPECT_EQ(rewritten, path);
    }
    std::string gone = "/m/gone.mp3";
    EXPECT_EQ(player.tags.FileNameTitle(gone), "");
    EXPECT_EQ(gone, "/m/") << "a missing path is left as the bare directory";
    std::string location = "http://radio/stream.ogg";
    EXPECT_EQ(player.tags.FileNameTitle(location), "stream");
    EXPECT_EQ(location, "http://radio/stream.ogg");
    std::string empty;
    EXPECT_EQ(player.tags.FileNameTitle(empty), "");
}

TEST(Tags, ReadingAFileClosesItAgain)
{
    test::FakePlayer player;
    player.AddSound("/m/tune.xm", {.seconds = 61.5, .isModule = true});
    std::string path = "/m/tune.xm";
    EXPECT_EQ(player.tags.ReadFileTitle(path), "tun");
    EXPECT_EQ(player.tags.ReadFileLength(path), "01:02");
    EXPECT_EQ(player.tags.ReadFileLength("/m/gone.mp3"), "59:-01");
    player.tagLibrary.missing = true;
    EXPECT_THROW(player.tags.ReadFileTitle(path), RunError);
    EXPECT_TRUE(player.bass.channels.empty());
}

} // namespace
} // namespace velmo
