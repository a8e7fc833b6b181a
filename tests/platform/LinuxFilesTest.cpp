#include "linux/LinuxFiles.h"

#include "core/TextRules.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

namespace velmo {
namespace {

namespace fs = std::filesystem;

using Paths = std::vector<std::string>;

class LinuxFilesTest : public testing::Test
{
protected:
    /// What `Walk` finds, without the directory in front.
    Paths WalkFrom(const std::string& directory, bool recursive)
    {
        Paths names;
        for (const std::string& path : files.Walk(directory, recursive))
            names.push_back(path.substr(dir().size() + 1));
        return names;
    }

    /// Empty files, their names parted by blanks.
    void Make(std::string_view names) const
    {
        for (const std::string_view name : Split(names, ' '))
            dir.Write(std::string(name));
    }

    test::TempDir dir;
    LinuxFiles files;
};

TEST_F(LinuxFilesTest, DirSearchFollowsItsRulesInOrder)
{
    Make("Song.MP3 SONG.mp3 b.ogg A.ogg c.OGG .hidden .dot.ogg what?.mp3 whatX.mp3 ÄÖ.mp3"
         " Music/Deep/x.flac \xFF.mp3 a\\b.mp3");
    fs::create_directory(dir("folder.ogg"));
    fs::create_symlink("nowhere", dir("dangling"));
    fs::create_symlink("b.ogg", dir("link"));
    ::mkfifo(dir("pipe").c_str(), 0600);

    const std::pair<std::string, std::string> cases[] = {
        {"Song.MP3",          "Song.MP3" },
        {"song.mp3",          "SONG.mp3" }, // first in byte order
        {"*.ogg",             "A.ogg"    }, // by name, ignoring case; neither folder nor hidden file
        {"what?.mp3",         "what?.mp3"}, // a file of exactly that name comes first
        {".hidden",           ".hidden"  },
        {".h*",               ""         },
        {"folder.ogg",        ""         },
        {"dangling",          ""         },
        {"link",              "link"     },
        {"pipe",              "pipe"     },
        {"äö.MP3",          "ÄÖ.mp3" },
        {"MUSIC/deep/*.flac", "x.flac"   },
        {"\xFF.MP3",          "\xFF.mp3" },
        {"A\\B.mp3",          "a\\b.mp3" },
    };
    for (const auto& [asked, found] : cases)
        EXPECT_EQ(files.DirSearch(dir(asked)), found) << asked;
    for (const std::string& none : {std::string(), dir(std::string("Song.MP3\0", 9))})
        EXPECT_EQ(files.DirSearch(none), "");
    EXPECT_EQ(files.ResolveForOpen(dir("music/DEEP/x.flac")), dir("Music/Deep/x.flac"));
    EXPECT_TRUE(files.IsDirectory(dir("MUSIC")) && files.IsDirectory(dir("Music/")));
    EXPECT_FALSE(files.IsDirectory(dir("b.ogg")) || files.IsDirectory(""));
}

TEST_F(LinuxFilesTest, WindowsPathsExistOnlyByTheDriveMap)
{
    dir.Write("Disk/Music/A.mp3", "sound");
    dir.Write("Disk/Music/Sub/b.mp3");
    const std::string path = "C:\\MUSIC\\a.mp3";
    EXPECT_FALSE(files.Read(path).has_value());
    EXPECT_TRUE(files.Walk("C:\\", true).empty());
    LinuxFiles mapped("x=relative;c=" + dir("Disk") + ";;d");
    EXPECT_EQ(mapped.DirSearch(path), "A.mp3");
    EXPECT_EQ(mapped.Read(path), "sound");
    EXPECT_EQ(mapped.Walk("c:\\music", true), (Paths{"c:\\music\\A.mp3", "c:\\music\\Sub\\b.mp3"}));
    EXPECT_TRUE(mapped.IsDirectory("C:") && !mapped.IsDirectory("D:\\"));
    EXPECT_EQ(mapped.ReplaceFile("C:\\music\\New.ini", "k", 0644), ports::WriteResult::Written);
    EXPECT_EQ(dir.Read("Disk/Music/New.ini"), "k");
}

TEST_F(LinuxFilesTest, WalkIsSortedSkipsHiddenAndVisitsEachFolderOnce)
{
    Make("b.mp3 A.mp3 Zoo/1.mp3 apes/D/3.mp3 apes/a.mp3 .git/4.mp3 .5.mp3 \xFF.mp3");
    fs::create_directory_symlink("..", dir("apes/loop"));
    fs::create_directory_symlink(dir("Zoo"), dir("apes/l"));
    fs::create_symlink("nowhere", dir("broken"));
    ::mkfifo(dir("pipe").c_str(), 0600);

    EXPECT_EQ(WalkFrom(dir(), false), (Paths{"A.mp3", "b.mp3", "\xFF.mp3"}));
    EXPECT_EQ(WalkFrom(dir() + "/", true),
              (Paths{"A.mp3", "b.mp3", "\xFF.mp3", "apes/a.mp3", "apes/D/3.mp3", "apes/l/1.mp3"}));
    EXPECT_TRUE(files.Walk("", true).empty() && files.Walk(dir("b.mp3"), true).empty());
}

TEST_F(LinuxFilesTest, ReadGivesAllBytesOrNothing)
{
    const std::string content("a\0\xFF\r\n", 5);
    dir.Write("file", content);
    ::mkfifo(dir("pipe").c_str(), 0600);
    EXPECT_EQ(files.Read(dir("FILE")), content);
    for (const std::string& none : {dir(), dir("none"), std::string("/dev/zero")}) // without end
        EXPECT_FALSE(files.Read(none).has_value()) << none;
    EXPECT_EQ(files.Read(dir("pipe")), "") << "a pipe that nobody writes must not block";
    EXPECT_EQ(files.Stamp(dir("FILE")), files.Stamp(dir("file")));
    EXPECT_NE(files.Stamp(dir("file")), files.Stamp(dir("none")));
}

TEST_F(LinuxFilesTest, CopiesAreWholeAndNeverOntoThemselves)
{
    using ports::WriteResult;
    const std::string list = dir.Write("a.zvl", "content");
    EXPECT_EQ(files.CopyFile(list, dir("b.zvl")), WriteResult::Written);
    fs::create_symlink(list, dir("link.zvl"));
    for (const std::string& same : {list, dir("A.ZVL"), dir("link.zvl")})
        EXPECT_EQ(files.CopyFile(same, list), WriteResult::Written) << same;
    EXPECT_EQ(dir.Read("a.zvl"), "content");
    EXPECT_EQ(files.CopyFile(dir("gone"), dir("b.zvl")), WriteResult::Failed);
    EXPECT_EQ(dir.Read("b.zvl"), "content");
    EXPECT_TRUE(files.RemoveFile(dir("B.zvl"))) << "found without regard to case";
    EXPECT_FALSE(files.RemoveFile(dir("b.zvl")));
    EXPECT_TRUE(files.MakeDirectory(dir("lists/")));
    EXPECT_TRUE(files.MakeDirectory(dir("lists/"))) << "it is there";
    EXPECT_FALSE(files.MakeDirectory(dir("no/such/parent")));
    EXPECT_FALSE(files.RemoveFile(dir("lists")));
}

} // namespace
} // namespace velmo
