#include "support/FakePlayer.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

TEST(Tags, OfEachFieldTheLongerTagWinsAndId3v1WhereBothAreAsLong)
{
    using Fields = std::pair<const char*, const char*>; // artist and title
    const auto expect = [](Fields own, Fields v1, const char* title) {
        test::FakePlayer player;
        player.AddSound("/m/a.mp3", {.seconds = 1});
        player.tagLibrary.formatTags["/m/a.mp3 %ARTI"] = own.first;
        player.tagLibrary.formatTags["/m/a.mp3 %TITL"] = own.second;
        player.tagLibrary.id3v1Tags["/m/a.mp3 %ARTI"] = v1.first;
        player.tagLibrary.id3v1Tags["/m/a.mp3 %TITL"] = v1.second;
        const DWORD channel = player.table.BASS_StreamCreateFile(0, u"/m/a.mp3", 0, 0, 0);
        EXPECT_EQ(player.tags.MakeTagTitle(channel), title);
        EXPECT_EQ(player.files.current, "/app/");
    };
    expect({"Long artist", "T"}, {"Artist", "Title of v1"}, "Long artist - Title of v1");
    expect({"same", "size"}, {"SAME", "SIZE"}, "SAME - SIZE");
    expect({"éé", "t"}, {"abc", "t"}, "abc - t"); // characters count, not bytes
    expect({"ABBA", ""}, {"", ""}, "ABBA");
    expect({"A-", ""}, {"", ""}, "A-");
    expect({"", "- "}, {"", ""}, "");
}

TEST(Tags, TitleAndLengthComeFromOneOpeningThatIsClosedAgain)
{
    test::FakePlayer player;
    player.AddSound("/m/tune.xm", {.seconds = 61.5, .isModule = true});
    std::string path = "/m/tune.xm";
    EXPECT_EQ(player.tags.ReadFileTitle(path), "tun");
    EXPECT_EQ(player.tags.ReadFileLength(path), "01:02");
    EXPECT_EQ(player.tags.ReadFileLength("/m/gone.mp3"), "59:-01");
    std::string title = "old";
    std::string length = "old";
    EXPECT_FALSE(player.tags.ReadFileTitleAndLength("/m/gone.mp3", title, length));
    EXPECT_EQ(title + length, "") << "no name in place of a title";
    player.bass.calls.clear();
    EXPECT_TRUE(player.tags.ReadFileTitleAndLength("/m/tune.xm", title, length));
    EXPECT_EQ(title + " " + length, "tun 01:02");
    EXPECT_EQ(player.bass.TakeCalls(),
              "BASS_StreamCreateFile /m/tune.xm; BASS_StreamCreateURL; BASS_MusicLoad /m/tune.xm; "
              "BASS_ChannelStop 103; BASS_StreamFree 103; BASS_MusicFree 103");
    player.tagLibrary.missing = true;
    EXPECT_THROW(player.tags.ReadFileTitle(path), RunError);
    EXPECT_TRUE(player.bass.channels.empty());
}

TEST(Tags, TheFileNameLosesFourCharactersWhateverTheyAre)
{
    const std::pair<const char*, const char*> cases[] = {
        {"/m/song.flac",  "song." },
        {"/m/a.it",       ""      },
        {"/m/\xFFé.ogg", "\xFFé"},
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
}

} // namespace
} // namespace velmo
