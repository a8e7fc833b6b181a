/// What is no sound is refused, what is damaged ends.
#include "FileCases.h"
#include "OpenTestFile.h"

#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <ctime>
#include <string_view>

#include <sys/stat.h>

namespace velmo::test {
namespace {

using engine::SourceKind;

Bytes Random(std::size_t count)
{
    Bytes bytes;
    std::uint32_t random = 7;
    while (bytes.size() < count) {
        random = random * 1664525U + 1013904223U;
        bytes += static_cast<char>(random >> 24U);
    }
    return bytes;
}

/// What is refused costs milliseconds; instrumented code some dozen times as much.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr std::clock_t MostTime = 5 * CLOCKS_PER_SEC;
#else
constexpr std::clock_t MostTime = CLOCKS_PER_SEC;
#endif

class Refusal : public testing::Test
{
protected:
    static void ExpectRefused(const std::string& path, int error)
    {
        SCOPED_TRACE(path);
        const std::clock_t before = std::clock();
        EXPECT_EQ(OpenFile(path, SourceKind::Stream).error, error);
        EXPECT_EQ(OpenFile(path, SourceKind::Music).error, error);
        EXPECT_LT(std::clock() - before, MostTime);
    }

    TempDir m_folder;
};

TEST_F(Refusal, WhatIsNoReadableFileCannotBeOpened)
{
    ASSERT_EQ(mkfifo(m_folder("pipe").c_str(), 0600), 0);
    for (const std::string& path : {m_folder("missing"),
                                    m_folder(),
                                    m_folder("pipe"),
                                    std::string("/dev/zero"),
                                    std::string(),
                                    std::string(5000, 'x')})
        ExpectRefused(path, 2);
}

TEST_F(Refusal, ForeignContentsAreNoSound)
{
    const auto expect = [&](const char* name, const Bytes& bytes) {
        ExpectRefused(m_folder.Write(name, bytes), 41);
    };
    Bytes text;
    while (text.size() < 200000)
        text += "words\n";
    expect("empty", {});
    expect("one byte", "\xFF");
    expect("text", text);
    expect("random", Random(500000));
    expect("random after a tag", MakeId3v2(5000) + Random(100000));
    expect("only a tag", MakeId3v2(5000));
    expect("a tag cut short", MakeId3v2(5000).substr(0, 300));
    expect("ones", Bytes(100000, '\xFF'));
    expect("zeros", Bytes(100000, '\0'));
    expect("one frame", MakeSilentMpeg(2, 1));
    expect("frames of two kinds", MakeSilentMpeg(1, 1) + MakeSilentMpeg(2, 1));
}

enum class Damage
{
    ZeroBlock,
    CutInHalf,
    BadBytes
};

Bytes Damaged(Bytes bytes, Damage damage)
{
    const std::size_t middle = bytes.size() / 2;
    if (damage == Damage::CutInHalf)
        return bytes.substr(0, middle);
    if (damage == Damage::ZeroBlock)
        return bytes.replace(middle, bytes.size() / 20, bytes.size() / 20, '\0');
    for (std::size_t at = bytes.size() / 3; at + 8 < bytes.size(); at += 997)
        bytes.replace(at, 8, 8, '\xFF'); // so many that a float of them is no number
    return bytes;
}

TEST_F(Refusal, DamagedFilesPlayWhatTheyCanAndEnd)
{
    int opened = 0;
    int refused = 0;
    for (const FileCase& file : FileCases()) {
        SCOPED_TRACE(file.name);
        for (const std::size_t size : {4U, 12U, 30U})
            ExpectRefused(m_folder.Write("file", file.bytes.substr(0, size)), 41);
        for (const Damage damage : {Damage::ZeroBlock, Damage::CutInHalf, Damage::BadBytes}) {
            SCOPED_TRACE(static_cast<int>(damage));
            const auto source =
                OpenFile(m_folder.Write("file", Damaged(file.bytes, damage)), file.kind);
            ++(source ? opened : refused);
            if (!source)
                continue; // what stands at the end, or on one page, may be lost as a whole
            const BASS_SOURCE_FORMAT format = source.value->Format();
            const std::vector<float> played = ReadAll(*source.value);
            EXPECT_LE(played.size(), format.lengthFrames * format.channels);
            EXPECT_TRUE(std::ranges::all_of(played, [](float x) { return std::isfinite(x); }));
            // A third precedes the first damage, but what is damaged is blocks and pages.
            EXPECT_GE(played.size() / format.channels * 7, format.lengthFrames);
            for (const std::uint64_t part : {3U, 1U, 2U, 0U}) {
                if (source.value->Seek(format.lengthFrames * part / 3))
                    ReadAll(*source.value);
            }
        }
    }
    EXPECT_GT(opened, 4 * refused);
}

/// What is put into a file, at `offset` behind the first place of `mark`.
struct Lie
{
    const char* name;
    const char* mark;
    std::size_t offset;
    std::string_view told;
};

TEST_F(Refusal, LengthsThatAreNotTrueEndWithTheSound)
{
    using namespace std::string_view_literals;
    const std::vector<FileCase> files = FileCases();
    for (const Lie& lie : {
             Lie{"wav 16",       "data",             4,  "\xFF\xFF\xFF\x7F"sv},
             Lie{"wav 16",       "data",             4,  "\0\0\0\0"sv        },
             Lie{"aiff",         "SSND",             4,  "\x7F\xFF\xFF\xFF"sv},
             Lie{"flac",         "fLaC",             22, "\x7F"sv            },
             Lie{"wavpack",      "wvpk",             12, "\xFF\xFF\xFF\x7F"sv},
             Lie{"m4a",          "mdhd",             20, "\x7F\xFF\xFF\xFF"sv},
             Lie{"m4a",          "mvhd",             20, "\x7F\xFF\xFF\xFF"sv},
             Lie{"m4a",          "mdhd",             16, "\x7F"sv            },
             Lie{"wma",          "\xA1\xDC\xAB\x8C", 70, "\x10"sv            },
             Lie{"mp3 variable", "Xing",             8,  "\x00\xFF"sv        },
    }) {
        SCOPED_TRACE(std::string(lie.name) + " " + lie.mark);
        FileCase file = CaseOf(files, lie.name);
        const std::size_t place = file.bytes.find(lie.mark);
        ASSERT_NE(place, Bytes::npos);
        file.bytes.replace(place + lie.offset, lie.told.size(), lie.told);
        const auto source = OpenFile(m_folder.Write("file", file.bytes), SourceKind::Stream);
        ASSERT_EQ(source.error, 0);
        const std::size_t played = ReadAll(*source.value).size() / file.shape.channels;
        EXPECT_GE(played * 10, file.shape.frames * 8); // a block whose header is wrong may be lost
        EXPECT_LE(played, file.shape.frames * 2);
    }
}

TEST(DecoderList, PluginsComeBeforeMpegAndBehindTheRest)
{
    const BASS_DECODER plugin = {};
    const auto list = engine::ListDecoders(std::vector<engine::DecoderEntry>{
        {.decoder = &plugin, .owner = {}}
    });
    ASSERT_GE(list.size(), 4U);
    EXPECT_EQ(list[list.size() - 2].decoder, &plugin);
    EXPECT_EQ(list.back().decoder->masks, std::string_view("*.mp3;*.mp2;*.mp1"));
}

} // namespace
} // namespace velmo::test
