#include "forms/Playlist.h"
#include "playlist/ListFile.h"
#include "playlist/ListText.h"
#include "support/FakeFiles.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

using enum ListFormat;
using enum ListOutcome;

/// One line a row: title, length and path.
std::string TextsOf(const controls::ListRows& rows)
{
    std::string all;
    for (std::size_t row = 1; row <= rows.Count(); ++row) {
        const auto [title, length, path] = rows.Texts(row);
        all.append(title).append("|").append(length).append("|").append(path).append("\n");
    }
    return all;
}

void ExpectRead(ListFormat format,
                const std::string& bytes,
                ListOutcome outcome,
                const std::string& rows)
{
    forms::Playlist playlist;
    EXPECT_EQ(ReadList(format, bytes, {.numbers = false, .lengths = true}, playlist.pl), outcome)
        << bytes;
    EXPECT_EQ(TextsOf(playlist.pl), rows) << bytes;
}

TEST(ListFormats, TheOwnFormatIsReadWithItsOddities)
{
    ExpectRead(Own, "#zvl20#\r\na\r\n1#/b\r\n", ForeignHeader, "");
    ExpectRead(Own, "#ZVL20x\r\na\r\n61#/b", Complete, "a|01:01|/b\n");
    ExpectRead(Own, "\xEF\xBB\xBF#ZVL20#\na\n4080#/b\n", Complete, "a|01:07:00|/b\n");
    ExpectRead(Own, "#ZVL20#\n\n0#/m/#1.mp3\n", Complete, "|00:00|/m/\n");
    ExpectRead(Own, "#ZVL20#\na\n61\n", Complete, "a|01:01|\n");
    ExpectRead(Own, "#ZVL20#\na\n1#/b\nc\n", CutShort, "a|00:01|/b\nc||\n");
    ExpectRead(Own, "#ZVL20#\nCaf\xE9\n1#/\x80\n", Complete, "Café|00:01|/€\n");
    ExpectRead(Own, "#ZVL20#\né\n1#/\xED\xB3\xBF\n", Complete, "é|00:01|/\xFF\n");
}

TEST(ListFormats, M3uIsTakenInPairs)
{
    ExpectRead(M3u, "#EXTM3U \r\n#EXTINF:1,a\r\nb\r\n", ForeignHeader, "");
    ExpectRead(M3u, "#extm3u\r#EXTINF:-1,Radio\rhttp://r/", Complete, "Radio|59:-01|http://r/\n");
    ExpectRead(
        M3u, "#EXTM3U\n#EXTINF:120,Foo, Bar\nC:\\f.mp3\n", Complete, "Foo|02:00|C:\\f.mp3\n");
    ExpectRead(M3u, "#EXTM3U\n,a\n\\\\server\\x\n", Complete, "a|00:00|c:\\\\server\\x\n");
    ExpectRead(M3u, "#EXTM3U\n#EXTINF:1,\n/b\n#EXTINF:2\n/c\n#EXTINF:3,d\n\n", Complete, "");
    ExpectRead(
        M3u, "#EXTM3U\n\n#EXTINF:1,a\n/b,x\n#EXTINF:2,c\n", Complete, "x|00:00|#EXTINF:2,c\n");
    ExpectRead(M3u, "#EXTM3U\n#EXTINF:1,a\n/b\n#EXTINF:2,c", CutShort, "a|00:01|/b\n");
}

TEST(ListFormats, PlsIsReadAsAProfile)
{
    const std::string kept(254, 'x');
    ExpectRead(Pls, "[playlist] \nNumberOfEntries=1\nFile1=a\n", ForeignHeader, "");
    ExpectRead(Pls, "[playlist]\nNumberOfEntries=-5\nFile1=a\n", Complete, "");
    ExpectRead(Pls,
               "[PlayList]\nNUMBEROFENTRIES=2\nlength1=-1\nfile1=/a#b,c\ntitle1=T, U\nFile2=\n",
               Complete,
               "T, U|59:-01|/a#b,c\n0|00:00|\n");
    ExpectRead(Pls,
               "[playlist]\nFile1=" + kept + "xx\nNumberOfEntries=1x\n",
               Complete,
               "0|00:00|" + kept + "\n");
    forms::Playlist playlist;
    ReadList(Pls, "[playlist]\nNumberOfEntries=1e18\n", {}, playlist.pl);
    EXPECT_EQ(playlist.pl.Count(), 100'000U) << "a number alone does not fill the memory";
}

TEST(ListFormats, EachIsWrittenByteByByte)
{
    forms::Playlist playlist;
    EXPECT_EQ(WriteList(Pls, playlist.pl, ""), "[playlist]\r\nNumberOfEntries=0\r\nVersion=2\r\n");
    playlist.pl.Add({"1. A, b", "03:35", "\\m\\a.mp3"});
    playlist.pl.Add({"2. two\nlines", "", "/m/\xFF#.ogg"});
    EXPECT_EQ(WriteList(Own, playlist.pl, "#ZVL20#Untitled playlist"),
              "#ZVL20#Untitled playlist\r\nA, b\r\n215#\\m\\a.mp3\r\n"
              "two lines\r\n0#/m/\xED\xB3\xBF#.ogg\r\n");
    EXPECT_EQ(WriteList(M3u, playlist.pl, ""),
              "#EXTM3U\r\n#EXTINF:215,A, b\r\n\\m\\a.mp3\r\n"
              "#EXTINF:0,two lines\r\n/m/\xED\xB3\xBF#.ogg\r\n");
    EXPECT_EQ(WriteList(Pls, playlist.pl, ""),
              "[playlist]\r\nFile1=\\m\\a.mp3\r\nTitle1=A, b\r\nLength1=215\r\n"
              "File2=/m/\xED\xB3\xBF#.ogg\r\nTitle2=two lines\r\nLength2=0\r\n"
              "NumberOfEntries=2\r\nVersion=2\r\n");
}

/// Which only the rest of the file may tell.
TEST(ListFormats, TheFirstLineOfALongFileIsReadInTheFilesEncoding)
{
    test::FakeFiles files;
    const std::string rest = "\r\n" + std::string(5000, '.');
    const std::string longLine(5000, 'x');
    const auto expect = [&](const std::string& file, const std::string& line) {
        files.files["/file"] = file;
        EXPECT_EQ(FirstLineOfFile("/file", files), line);
    };
    expect("\xEF\xBB\xBF" + ("Caf\xC3\xA9" + rest), "Café");
    expect("Caf\xC3\xA9" + rest + "\xE9", "CafÃ©");
    expect(longLine + rest, longLine);
    expect("Caf\xE9", "Café");
    EXPECT_EQ(FirstLineOfFile("/none", files), "");
}

} // namespace
} // namespace velmo
