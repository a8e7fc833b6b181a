#include "TagFields.h"

#include "TestFiles.h"

#include "support/TempDir.h"

#include <gtest/gtest.h>

namespace velmo::tags {
namespace {

constexpr const char* AllTexts = "Künstler|Lied|(c) me|Remark|Platte|7|Someone";

struct Encoder
{
    DWORD ctype;
    const char* name;
    const char* suffix;
    const char* texts; ///< some have no place for all of them, or another
};

constexpr Encoder Encoders[] = {
    {BASS_CTYPE_STREAM_WAV,      "pcm_s16le",          ".wav",  "Künstler|Lied|(c) me|Remark|Platte|7|" },
    {BASS_CTYPE_STREAM_AIFF,     "pcm_s16be",          ".aiff", "Künstler|Lied|(c) me|Remark|||"        },
    {BASS_CTYPE_STREAM_FLAC,     "flac",               ".flac", AllTexts                                 },
    {BASS_CTYPE_STREAM_FLAC_OGG, "flac",               ".oga",  AllTexts                                 },
    {BASS_CTYPE_STREAM_OGG,      "libvorbis",          ".ogg",  AllTexts                                 },
    {BASS_CTYPE_STREAM_OPUS,     "libopus",            ".opus", AllTexts                                 },
    {BASS_CTYPE_STREAM_WV,       "wavpack",            ".wv",   AllTexts                                 },
    {BASS_CTYPE_STREAM_TTA,      "tta",                ".tta",  AllTexts                                 },
    {BASS_CTYPE_STREAM_AAC,      "aac -write_id3v2 1", ".aac",  AllTexts                                 },
    {BASS_CTYPE_STREAM_MP4,      "aac",                ".m4a",  AllTexts                                 },
    {BASS_CTYPE_STREAM_ALAC,     "alac",               ".m4a",  AllTexts                                 },
    {BASS_CTYPE_STREAM_WMA,      "wmav2",              ".wma",  "Künstler|Lied|(c) me||Platte|7|Someone"},
    {BASS_CTYPE_STREAM_MP3,      "mp3 -write_id3v1 1", ".mp3",  AllTexts                                 },
};

/// A text of a fixed size in the last block of a file.
std::string Padded(std::string text, char filler = '\0')
{
    text.resize(30, filler);
    return text;
}

std::string Id3v1Of(const std::string& path)
{
    TagFile file(path);
    return Fill("%TITL|%ARTI|%ALBM|%YEAR|%CMNT|%TRCK|%GNRE", ReadId3v1(file));
}

std::string FormatTagsOf(const std::string& path, DWORD ctype)
{
    TagFile file(path);
    return Fill("%ARTI|%TITL|%COPY|%CMNT|%ALBM|%TRCK|%COMP", ReadFormatTags(file, ctype));
}

class Tags : public testing::Test
{
protected:
    std::string FileOf(const std::string& content) const
    {
        return m_directory.Write("file", content);
    }

    /// What `ffmpeg` makes of noise by those options.
    static std::string Encoded(const std::string& options, const std::string& suffix)
    {
        const test::Bytes bytes = test::Encode(
            "ffmpeg -nostdin -v error -i $in " + options + " $out", suffix, {.frames = 4000});
        return {bytes.begin(), bytes.end()};
    }

    test::TempDir m_directory;
};

TEST_F(Tags, Id3v1TextsEndAtPaddingAndAreUtf8OrWindows1252)
{
    const std::string album = Padded("Album") + "1999";
    const std::string tagged = "sound" + ("TAG" + Padded("Café")) + Padded("Caf\xE9 \x80", ' ')
                               + album + Padded("Remark", ' ').substr(0, 28) + '\0' + "\x0c\x11";
    EXPECT_EQ(Id3v1Of(FileOf(tagged)), "Café|Café €|Album|1999|Remark|12|Rock");
    const std::string c(30, 'c'); // without a track the comment has thirty characters
    EXPECT_EQ(Id3v1Of(FileOf("TAG" + Padded("T") + Padded("A") + album + c + '\xFF')),
              "T|A|Album|1999|" + c + "||");
    for (const std::string& none : {std::string("/nowhere"), m_directory(), FileOf("TAGx")})
        EXPECT_EQ(Id3v1Of(none), "||||||") << none;
}

TEST_F(Tags, EachTagOfAFileIsReadForItself)
{
    const std::string file = VELMO_DEMO_DIRECTORY "/night-ferry.mp3";
    EXPECT_TRUE(FormatTagsOf(file, BASS_CTYPE_STREAM_MP3)
                    .starts_with("Velmo Ensemble|The Night Ferry to Skärgården, Slowly|"));
    EXPECT_TRUE(Id3v1Of(file).starts_with("The Night Ferry|"));
}

TEST_F(Tags, EncodersOfAllKindsAreRead)
{
    for (const Encoder& encoder : Encoders) {
        const std::string content =
            Encoded(std::string("-c:a ") + encoder.name
                        + " -metadata artist='Künstler' -metadata author='Künstler'"
                          " -metadata title='Lied' -metadata album='Platte' -metadata track=7"
                          " -metadata copyright='(c) me' -metadata composer='Someone'"
                          " -metadata comment='Remark'",
                    encoder.suffix);
        EXPECT_EQ(FormatTagsOf(FileOf(content), encoder.ctype), encoder.texts) << encoder.suffix;
    }
}

TEST_F(Tags, TextsOfWavFilesMayBeWindows1252)
{
    std::string content = Encoded("-metadata artist=XYZ", ".wav");
    content.replace(content.find("XYZ"), 3, "\x80\xE9Z");
    EXPECT_EQ(FormatTagsOf(FileOf(content), BASS_CTYPE_STREAM_WAV), "€éZ||||||");
}

TEST_F(Tags, DamagedFilesHaveNone)
{
    for (const char* head :
         {"OggS", "OggSOpusHead", "OggSFLAC", "fLaC", "RIFF", "FORM", "ID3", ""}) {
        const std::string file = FileOf(head + std::string(200, '\xFF'));
        for (const Encoder& encoder : Encoders)
            EXPECT_EQ(FormatTagsOf(file, encoder.ctype), "||||||") << head << encoder.suffix;
    }
    EXPECT_EQ(FormatTagsOf("/nowhere", BASS_CTYPE_STREAM_MP3), "||||||");
}

TEST_F(Tags, OfAnotherKindInFrontHideNone)
{
    const std::string tag = std::string("ID3\x03\0\0\0\0\0\x40", 10) + std::string(64, '\0');
    const std::string flac = Encoded("-metadata title=Lied", ".flac");
    EXPECT_EQ(FormatTagsOf(FileOf(tag + flac), BASS_CTYPE_STREAM_FLAC), "|Lied|||||");
}

} // namespace
} // namespace velmo::tags
