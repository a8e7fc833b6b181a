#include "TagFields.h"

#include "EncodedFiles.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include <unistd.h>

namespace velmo::tags {
namespace {

/// A file with that content, removed at the end.
class TemporaryFile
{
public:
    explicit TemporaryFile(const std::string& content)
        : m_path(std::filesystem::temp_directory_path()
                 / ("velmo-tags-" + std::to_string(getpid()) + ".bin"))
    {
        std::ofstream(m_path, std::ios::binary) << content;
    }
    ~TemporaryFile() { std::filesystem::remove(m_path); }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    std::string Path() const { return m_path.string(); }

private:
    std::filesystem::path m_path;
};

std::string Padded(std::string text, std::size_t size, char filler)
{
    text.resize(size, filler);
    return text;
}

std::string Block(const std::string& title,
                  const std::string& artist,
                  const std::string& comment,
                  char genre)
{
    return "TAG" + Padded(title, 30, '\0') + Padded(artist, 30, ' ') + Padded("Album", 30, '\0')
           + "1999" + comment + genre;
}

std::string Demo(const char* name)
{
    return std::string(VELMO_DEMO_DIRECTORY) + "/" + name;
}

TagFields Id3v1Of(const std::string& path)
{
    TagFile file(path);
    return ReadId3v1(file);
}

TagFields FormatTagsOf(const std::string& path, DWORD ctype)
{
    TagFile file(path);
    return ReadFormatTags(file, ctype);
}

TEST(Id3v1, TextsEndAtPaddingAndAreReadAsUtf8OrAsWindows1252)
{
    const std::string comment = Padded("Remark", 28, ' ') + '\0' + '\x0c';
    const TemporaryFile file("sound sound" + Block("Caf\xC3\xA9", "Caf\xE9 \x80", comment, '\x11'));
    const TagFields fields = Id3v1Of(file.Path());
    EXPECT_EQ(fields.title, "Caf\xC3\xA9");
    EXPECT_EQ(fields.artist, "Caf\xC3\xA9 \xE2\x82\xAC");
    EXPECT_EQ(fields.album, "Album");
    EXPECT_EQ(fields.year, "1999");
    EXPECT_EQ(fields.comment, "Remark");
    EXPECT_EQ(fields.track, "12");
    EXPECT_EQ(fields.genre, "Rock");
}

TEST(Id3v1, WithoutATrackTheCommentHasThirtyCharacters)
{
    const TemporaryFile file(Block("T", "A", Padded("c", 30, 'c'), '\xFF'));
    const TagFields fields = Id3v1Of(file.Path());
    EXPECT_EQ(fields.comment, std::string(30, 'c'));
    EXPECT_EQ(fields.track, "");
    EXPECT_EQ(fields.genre, "");
}

TEST(Id3v1, WhatHasNoBlockHasNoTag)
{
    EXPECT_EQ(Id3v1Of("/nowhere").title, "");
    EXPECT_EQ(Id3v1Of("/").title, "");
    const TemporaryFile tooShort("TAGx");
    EXPECT_EQ(Id3v1Of(tooShort.Path()).title, "");
}

TEST(FormatTags, EachKindOfFileTellsItsOwnTags)
{
    const char* const longTitle = "The Night Ferry to Sk\xC3\xA4rg\xC3\xA5rden, Slowly";
    const struct
    {
        const char* file;
        DWORD ctype;
        const char* artist;
        const char* title;
    } cases[] = {
        {"night-ferry.mp3",        BASS_CTYPE_STREAM_MP3,  "Velmo Ensemble", longTitle          },
        {"harbour-in-glass.ogg",   BASS_CTYPE_STREAM_OGG,  "Velmo Ensemble", "Harbour in Glass" },
        {"five-little-bells.wav",  BASS_CTYPE_STREAM_WAV,  "Velmo Ensemble", "Five Little Bells"},
        {"rain-on-the-bench.flac", BASS_CTYPE_STREAM_FLAC, "Velmo Ensemble", "Rain on the Bench"},
    };
    for (const auto& c : cases) {
        const TagFields fields = FormatTagsOf(Demo(c.file), c.ctype);
        EXPECT_EQ(fields.artist, c.artist) << c.file;
        EXPECT_EQ(fields.title, c.title) << c.file;
    }
    EXPECT_EQ(Id3v1Of(Demo("night-ferry.mp3")).title, "The Night Ferry");
}

TEST(FormatTags, EncodersOfAllKindsAreRead)
{
    const struct
    {
        DWORD ctype;
        const char* encoder;
        const char* suffix;
        std::string lacks; ///< what the encoder has no place for, or another
    } cases[] = {
        {BASS_CTYPE_STREAM_WAV,      "pcm_s16le",          ".wav",  "composer"      },
        {BASS_CTYPE_STREAM_AIFF,     "pcm_s16be",          ".aiff", "album composer"},
        {BASS_CTYPE_STREAM_FLAC,     "flac",               ".flac", ""              },
        {BASS_CTYPE_STREAM_FLAC_OGG, "flac",               ".oga",  ""              },
        {BASS_CTYPE_STREAM_OGG,      "libvorbis",          ".ogg",  ""              },
        {BASS_CTYPE_STREAM_OPUS,     "libopus",            ".opus", ""              },
        {BASS_CTYPE_STREAM_WV,       "wavpack",            ".wv",   ""              },
        {BASS_CTYPE_STREAM_TTA,      "tta",                ".tta",  ""              },
        {BASS_CTYPE_STREAM_AAC,      "aac -write_id3v2 1", ".aac",  ""              },
        {BASS_CTYPE_STREAM_MP4,      "aac",                ".m4a",  ""              },
        {BASS_CTYPE_STREAM_ALAC,     "alac",               ".m4a",  ""              },
        {BASS_CTYPE_STREAM_WMA,      "wmav2",              ".wma",  "comment"       },
        {BASS_CTYPE_STREAM_MP3,      "mp3 -write_id3v1 1", ".mp3",  ""              },
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.suffix);
        const test::Bytes bytes = test::Encode(
            std::string("ffmpeg -nostdin -v error -i $in -c:a ") + c.encoder
                + " -metadata artist='K\xC3\xBCnstler' -metadata author='K\xC3\xBCnstler'"
                  " -metadata title='Lied' -metadata album='Platte' -metadata track=7"
                  " -metadata copyright='(c) me' -metadata composer='Someone'"
                  " -metadata comment='Remark' $out",
            c.suffix,
            {.frames = 4000});
        const TemporaryFile file(std::string(bytes.begin(), bytes.end()));
        const TagFields fields = FormatTagsOf(file.Path(), c.ctype);
        EXPECT_EQ(fields.artist, "K\xC3\xBCnstler");
        EXPECT_EQ(fields.title, "Lied");
        EXPECT_EQ(fields.copyright, "(c) me");
        const auto expected = [&](const char* field, const char* text) {
            return c.lacks.find(field) == std::string::npos ? text : "";
        };
        EXPECT_EQ(fields.comment, expected("comment", "Remark"));
        EXPECT_EQ(fields.album, expected("album", "Platte"));
        EXPECT_EQ(fields.track, expected("album", "7"));
        EXPECT_EQ(fields.composer, expected("composer", "Someone"));
    }
}

TEST(FormatTags, TextsOfWavFilesMayBeWindows1252)
{
    const test::Bytes bytes = test::Encode(
        "ffmpeg -nostdin -v error -i $in -metadata artist=XYZ $out", ".wav", {.frames = 100});
    std::string content(bytes.begin(), bytes.end());
    content.replace(content.find("XYZ"), 3, "\x80\xE9Z");
    const TemporaryFile file(content);
    EXPECT_EQ(FormatTagsOf(file.Path(), BASS_CTYPE_STREAM_WAV).artist, "\xE2\x82\xAC\xC3\xA9Z");
}

TEST(FormatTags, DamagedFilesHaveNone)
{
    constexpr DWORD Kinds[] = {BASS_CTYPE_STREAM,
                               BASS_CTYPE_STREAM_OGG,
                               BASS_CTYPE_STREAM_MP3,
                               BASS_CTYPE_STREAM_AIFF,
                               BASS_CTYPE_STREAM_WAV,
                               BASS_CTYPE_STREAM_FLAC,
                               BASS_CTYPE_STREAM_OPUS,
                               BASS_CTYPE_STREAM_WV,
                               BASS_CTYPE_STREAM_MP4,
                               BASS_CTYPE_STREAM_WMA,
                               BASS_CTYPE_STREAM_TTA};
    for (const char* head :
         {"OggS", "OggSOpusHead", "OggSFLAC", "fLaC", "RIFF", "FORM", "ID3", ""}) {
        const TemporaryFile file(head + std::string(200, '\xFF'));
        for (const DWORD ctype : Kinds)
            EXPECT_EQ(FormatTagsOf(file.Path(), ctype).title, "") << head << ctype;
    }
    for (const DWORD ctype : Kinds)
        EXPECT_EQ(FormatTagsOf("/nowhere", ctype).title, "");
}

TEST(FormatTags, TagOfAnotherKindInFrontHidesNone)
{
    std::ifstream flac(Demo("rain-on-the-bench.flac"), std::ios::binary);
    const std::string bytes(std::istreambuf_iterator<char>(flac), {});
    const std::string tag = std::string("ID3\x03\0\0\0\0\0\x40", 10) + std::string(64, '\0');
    const TemporaryFile file(tag + bytes);
    EXPECT_EQ(FormatTagsOf(file.Path(), BASS_CTYPE_STREAM_FLAC).title, "Rain on the Bench");
}

TEST(Fill, ReplacesTheMarksItKnows)
{
    TagFields fields;
    fields.artist = "A";
    fields.title = "T";
    fields.track = "7";
    EXPECT_EQ(Fill("%TRCK. %ARTI: %TITL%%TITL %NONE", fields), "7. A: T%T %NONE");
}

} // namespace
} // namespace velmo::tags
