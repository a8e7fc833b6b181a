/// What is no sound is refused, what is damaged ends.
#include "FileCases.h"
#include "OpenTestFile.h"

#include <gtest/gtest.h>
#include <sndfile.h>

#include <ctime>
#include <iterator>

#include <sys/stat.h>

namespace velmo::test {
namespace {

using engine::SourceKind;

Bytes Random(std::size_t count)
{
    Bytes bytes(count);
    std::uint32_t random = 7;
    for (std::uint8_t& byte : bytes) {
        random = random * 1664525U + 1013904223U;
        byte = static_cast<std::uint8_t>(random >> 24U);
    }
    return bytes;
}

double ThreadSeconds()
{
    timespec time = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

struct Content
{
    const char* name;
    Bytes bytes;
};

/// What is refused costs milliseconds; instrumented code some dozen times as much.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr double MostSeconds = 5;
#else
constexpr double MostSeconds = 0.25;
#endif

class Refusal : public testing::Test
{
protected:
    void ExpectRefused(const std::string& path, int error) const
    {
        SCOPED_TRACE(path);
        const double before = ThreadSeconds();
        EXPECT_EQ(OpenFile(path, SourceKind::Stream).error, error);
        EXPECT_EQ(OpenFile(path, SourceKind::Music).error, error);
        EXPECT_LT(ThreadSeconds() - before, MostSeconds);
    }

    TemporaryFolder m_folder;
};

TEST_F(Refusal, WhatIsNoReadableFileCannotBeOpened)
{
    ASSERT_EQ(mkfifo(m_folder.Path("pipe").c_str(), 0600), 0);
    for (const std::string& path : {m_folder.Path("missing"),
                                    m_folder.Path(""),
                                    m_folder.Path("pipe"),
                                    std::string("/dev/zero"),
                                    std::string(),
                                    std::string(5000, 'x')})
        ExpectRefused(path, 2);
}

TEST_F(Refusal, ForeignContentsAreNoSound)
{
    Bytes text;
    while (text.size() < 200000)
        text = Join(text, {'w', 'o', 'r', 'd', 's', '\n'});
    Bytes mixedFrames = Join(First(MakeSilentMpeg(1, 1), 416), First(MakeSilentMpeg(2, 1), 417));
    const std::vector<Content> contents = {
        Content{"empty",              {}                                                  },
        Content{"one byte",           {0xFF}                                              },
        Content{"text",               text                                                },
        Content{"random",             Random(500000)                                      },
        Content{"random after a tag", Join(MakeId3v2(5000),                                 Random(100000))},
        Content{"only a tag",                    MakeId3v2(5000)                                                            },
        Content{"a tag cut short",                    First(MakeId3v2(5000),300)},
        Content{"ones",                Bytes(100000,                                                                         0xFF)},
        Content{"zeros",Bytes(100000)},
        Content{"picture",              Join({0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'},                                                             Random(50000))},
        Content{"program",            Join({0x7F, 'E', 'L', 'F', 2, 1, 1, 0}, Random(50000))},
        Content{"one frame",                    MakeSilentMpeg(2,                                                                1)},
        Content{"frames of two kinds",      std::move(mixedFrames)                                                         }
    };
    for (const Content& content : contents)
        ExpectRefused(m_folder.Write(content.name, content.bytes), 41);
}

TEST_F(Refusal, HeadersCutShortAreNoSound)
{
    for (const FileCase& content : FileCases())
        for (const std::size_t size : {4U, 12U, 30U})
            ExpectRefused(m_folder.Write(content.name, First(content.bytes, size)), 41);
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
        return First(bytes, middle);
    if (damage == Damage::ZeroBlock)
        std::fill_n(bytes.begin() + static_cast<std::ptrdiff_t>(middle),
                    bytes.size() / 20,
                    std::uint8_t{0});
    else
        for (std::size_t at = middle / 2; at < bytes.size(); at += 997)
            bytes[at] ^= 0xFFU;
    return bytes;
}

TEST_F(Refusal, DamagedFilesPlayWhatTheyCanAndEnd)
{
    for (const FileCase& content : FileCases()) {
        for (const Damage damage : {Damage::ZeroBlock, Damage::CutInHalf, Damage::BadBytes}) {
            SCOPED_TRACE(content.name);
            SCOPED_TRACE(static_cast<int>(damage));
            const std::string path = m_folder.Write("file", Damaged(content.bytes, damage));
            auto source = OpenFile(path, SourceKind::Stream);
            if (!source)
                source = OpenFile(path, SourceKind::Music);
            if (!source)
                continue; // a module may be refused as a whole
            const BASS_SOURCE_FORMAT format = source.value->Format();
            const std::vector<float> played = ReadAll(*source.value);
            EXPECT_LE(played.size(), format.lengthFrames * format.channels);
            EXPECT_TRUE(std::ranges::all_of(played, [](float x) { return std::isfinite(x); }));
            // A quarter precedes the first damage, but what is damaged is blocks and pages.
            EXPECT_GE(played.size() / format.channels * 7, format.lengthFrames);
            for (const std::uint64_t part : {3U, 1U, 2U, 0U}) {
                if (source.value->Seek(format.lengthFrames * part / 3))
                    ReadAll(*source.value);
            }
        }
    }
}

/// Bytes that are put into a file, at `offset` behind the first place of `mark`.
struct Lie
{
    const char* name;
    std::string_view mark;
    std::size_t offset;
    Bytes told;
};

TEST_F(Refusal, LengthsThatAreNotTrueEndWithTheSound)
{
    const std::array lies = {
        Lie{"wav 16",       "data",             4,  {0xFF, 0xFF, 0xFF, 0x7F}},
        Lie{"aiff",         "SSND",             4,  {0x7F, 0xFF, 0xFF, 0xFF}},
        Lie{"flac",         "fLaC",             22, {0x7F}                  },
        Lie{"wavpack",      "wvpk",             12, {0xFF, 0xFF, 0xFF, 0x7F}},
        Lie{"m4a",          "mdhd",             20, {0x7F, 0xFF, 0xFF, 0xFF}},
        Lie{"m4a",          "mvhd",             20, {0x7F, 0xFF, 0xFF, 0xFF}},
        Lie{"m4a",          "mdhd",             16, {0x7F}                  },
        Lie{"wma",          "\xA1\xDC\xAB\x8C", 70, {0x10}                  },
        Lie{"mp3 variable", "Xing",             8,  {0x00, 0xFF}            },
    };
    const std::vector<FileCase> files = FileCases();
    for (const Lie& lie : lies) {
        SCOPED_TRACE(std::string(lie.name) + " " + std::string(lie.mark));
        const auto found = std::ranges::find_if(
            files, [&](const FileCase& file) { return file.name == std::string_view(lie.name); });
        ASSERT_NE(found, files.end());
        Bytes bytes = found->bytes;
        const auto place = std::search(
            bytes.begin(),
            bytes.end(),
            lie.mark.begin(),
            lie.mark.end(),
            [](std::uint8_t byte, char mark) { return byte == static_cast<std::uint8_t>(mark); });
        ASSERT_NE(place, bytes.end());
        std::ranges::copy(lie.told, place + static_cast<std::ptrdiff_t>(lie.offset));
        const auto source = OpenFile(m_folder.Write("file", bytes), SourceKind::Stream);
        ASSERT_EQ(source.error, 0);
        const std::size_t played = ReadAll(*source.value).size() / found->channels;
        EXPECT_GE(played * 10, found->frames * 8); // a block whose header is wrong may be lost
        EXPECT_LE(played, found->frames * 2);
    }
}

TEST_F(Refusal, WhatIsNoNumberInAFloatFileIsSilence)
{
    Bytes wav = MakeSndfile(SF_FORMAT_WAV | SF_FORMAT_FLOAT, {.frames = 1000});
    std::fill_n(wav.end() - 4000, 400, std::uint8_t{0xFF});
    const auto source = OpenFile(m_folder.Write("file", wav), SourceKind::Stream);
    ASSERT_EQ(source.error, 0);
    const std::vector<float> played = ReadAll(*source.value);
    ASSERT_EQ(played.size(), 2000U);
    EXPECT_EQ(std::ranges::count(std::span(played).subspan(1000, 100), 0.0f), 100);
}

/// A decoder as a plugin brings it, which takes everything, and tells a format that cannot be
/// played.
const BASS_DECODER Greedy = {
    .name = "greedy",
    .masks = "*",
    .kind = BASS_DECODER_STREAM,
    .probe = [](const std::uint8_t*, std::size_t) { return 1; },
    .open = [](const char*, std::uint32_t, BASS_SOURCE_FORMAT* format, int*) -> void* {
        *format = {.sampleRate = 44100, .channels = 9, .lengthFrames = 1, .ctype = 1, .limited = 0};
        return new int(0);
    },
    .read = [](void*, float*, std::size_t) { return std::size_t{0}; },
    .seek = [](void*, std::uint64_t) { return 0; },
    .close = [](void* opened) { delete static_cast<int*>(opened); }};

TEST_F(Refusal, APluginComesBeforeMpegAndBehindTheRest)
{
    const auto list = engine::ListDecoders(std::vector<engine::DecoderEntry>{
        {.decoder = &Greedy, .owner = {}}
    });
    const auto open = [&](const Bytes& bytes) {
        const std::string path = m_folder.Write("file", bytes);
        return engine::Source::Open(path.c_str(), SourceKind::Stream, 44100, list).error;
    };
    EXPECT_EQ(open(MakeSndfile(SF_FORMAT_WAV | SF_FORMAT_PCM_16)), 0);
    EXPECT_EQ(open(MakeSilentMpeg(2, 10)), 6);
}

TEST_F(Refusal, AnOpenSourceKeepsItsPluginLoaded)
{
    BASS_DECODER playable = Greedy;
    playable.open = [](const char*, std::uint32_t, BASS_SOURCE_FORMAT* format, int*) -> void* {
        *format = {.sampleRate = 44100, .channels = 1, .lengthFrames = 1, .ctype = 1, .limited = 0};
        return new int(0);
    };
    auto library = std::make_shared<const int>(0);
    const std::weak_ptr<const int> loaded = library;
    std::vector<engine::DecoderEntry> list = {
        {.decoder = &playable, .owner = std::move(library)}
    };
    auto source = engine::Source::Open(
        m_folder.Write("file", Random(10)).c_str(), SourceKind::Stream, 44100, list);
    ASSERT_EQ(source.error, 0);
    list.clear();
    EXPECT_FALSE(loaded.expired());
    source.value.reset();
    EXPECT_TRUE(loaded.expired());
}

} // namespace
} // namespace velmo::test
