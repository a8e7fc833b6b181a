#include "controls/Form.h"
#include "core/TextRules.h"
#include "playlist/ListText.h"

#include <gmock/gmock.h>

namespace velmo {
namespace {

using controls::PlaylistEntry;

class ListForm final : public controls::Form
{
public:
    ListForm()
        : Form("list", "", 1, 1, controls::BorderStyle::None)
    {}
    controls::ListRows rows{*this, "rows", {}};

    std::vector<PlaylistEntry> All() const
    {
        std::vector<PlaylistEntry> all;
        for (std::size_t row = 1; row <= rows.Count(); ++row)
            all.push_back(rows.Row(row));
        return all;
    }
};

constexpr EntryStyle Plain{.numbers = false, .lengths = true};

struct ReadingCase
{
    ListFormat format;
    std::string bytes;
    ListOutcome outcome;
    std::vector<PlaylistEntry> entries;
};

void Check(const std::vector<ReadingCase>& cases)
{
    for (const ReadingCase& c : cases) {
        ListForm form;
        EXPECT_EQ(ReadList(c.format, c.bytes, Plain, form.rows), c.outcome) << c.bytes;
        EXPECT_EQ(form.All(), c.entries) << c.bytes;
    }
}

TEST(ListFormats, TheOwnFormatIsReadWithItsOddities)
{
    using enum ListOutcome;
    constexpr ListFormat F = ListFormat::Own;
    Check({
        {F, "",                                     ForeignHeader, {}                                         },
        {F, "#zvl20#\r\na\r\n1#/b\r\n",             ForeignHeader, {}                                         },
        {F, "#ZVL20",                               Complete,      {}                                         },
        {F, "#ZVL20x\r\na\r\n61#/b\r\n",            Complete,      {{"a", "01:01", "/b"}}                     },
        {F, "#ZVL20#\na\n61#/b",                    Complete,      {{"a", "01:01", "/b"}}                     },
        {F, "#ZVL20#\ra\r61#/b\r",                  Complete,      {{"a", "01:01", "/b"}}                     },
        {F, "\xEF\xBB\xBF#ZVL20#\na\n4080#/b\n",    Complete,      {{"a", "01:07:00", "/b"}}                  },
        {F, "#ZVL20#\n\n0#/m/#1.mp3\n",             Complete,      {{"", "00:00", "/m/"}}                     },
        {F, "#ZVL20#\na\nabc#x\n",                  Complete,      {{"a", "00:00", "x"}}                      },
        {F, "#ZVL20#\na\n61\n",                     Complete,      {{"a", "01:01", ""}}                       },
        {F, "#ZVL20#\na\n1#/b\nc\n",                CutShort,      {{"a", "00:01", "/b"}, {"c", "", ""}}      },
        {F, "#ZVL20#\nCaf\xE9\n1#/\x80\n",          Complete,      {{"Caf\xC3\xA9", "00:01", "/\xE2\x82\xAC"}}},
        {F, "#ZVL20#\n\xC3\xA9\n1#/\xED\xB3\xBF\n", Complete,      {{"\xC3\xA9", "00:01", "/\xFF"}}           },
    });
}

TEST(ListFormats, M3uIsTakenInPairs)
{
    using enum ListOutcome;
    constexpr ListFormat F = ListFormat::M3u;
    Check({
        {F, "#EXTM3U \r\n#EXTINF:1,a\r\nb\r\n",                        ForeignHeader, {}                                 },
        {F, "a.mp3\n",                                                 ForeignHeader, {}                                 },
        {F, "#extm3u",                                                 Complete,      {}                                 },
        {F,
         "#EXTM3U\n#EXTINF:120,Foo, Bar\nC:\\x\\f.mp3\n",              Complete,
         {{"Foo", "02:00", "C:\\x\\f.mp3"}}                                                                              },
        {F, "#EXTM3U\r#EXTINF:-1,Radio\rhttp://r/\r",                  Complete,      {{"Radio", "59:-01", "http://r/"}} },
        {F, "#EXTM3U\n#EXTINF:1,a\n\\\\server\\x\n",                   Complete,      {{"a", "00:01", R"(c:\\server\x)"}}},
        {F, "#EXTM3U\n,a\n/b\n",                                       Complete,      {{"a", "00:00", "/b"}}             },
        {F, "#EXTM3U\n#EXTINF:1,\n/b\n#EXTINF:2\n/c\n#EXTINF:3,d\n\n", Complete,      {}                                 },
        {F,
         "#EXTM3U\n\n#EXTINF:1,a\n/b,x\n#EXTINF:2,c\n",                Complete,
         {{"x", "00:00", "#EXTINF:2,c"}}                                                                                 },
        {F, "#EXTM3U\n#EXTINF:1,a\n/b\n#EXTINF:2,c",                   CutShort,      {{"a", "00:01", "/b"}}             },
    });
}

TEST(ListFormats, PlsIsReadAsAProfile)
{
    using enum ListOutcome;
    constexpr ListFormat F = ListFormat::Pls;
    const std::string longPath(300, 'x');
    Check({
        {F, "[playlist] \nNumberOfEntries=1\nFile1=a\n",                                   ForeignHeader, {}                                       },
        {F, "[PlayList]\nFile1=a\nNumberOfEntries=0\n",                                    Complete,      {}                                       },
        {F, "[playlist]\nFile1=a\n",                                                       Complete,      {}                                       },
        {F,
         "[playlist]\nNUMBEROFENTRIES=2\nlength1=-1\nfile1=/a#b,c\ntitle1=T, U\nFile2=\n", Complete,
         {{"T, U", "59:-01", "/a#b,c"}, {"0", "00:00", ""}}                                                                                        },
        {F,
         "[playlist]\nFile1=" + longPath + "\nNumberOfEntries=1x\n",
         Complete,                                                                                        {{"0", "00:00", longPath.substr(0, 254)}}},
        {F, "[playlist]\nNumberOfEntries=-5\n",                                            Complete,      {}                                       },
    });
    ListForm form;
    ReadList(F, "[playlist]\nNumberOfEntries=1e18\n", Plain, form.rows);
    EXPECT_EQ(form.rows.Count(), 100'000U) << "a number alone does not fill the memory";
}

TEST(ListFormats, EachIsWrittenByteByByte)
{
    ListForm form;
    EXPECT_EQ(WriteList(ListFormat::M3u, form.rows, ""), "#EXTM3U\r\n");
    EXPECT_EQ(WriteList(ListFormat::Pls, form.rows, ""),
              "[playlist]\r\nNumberOfEntries=0\r\nVersion=2\r\n");
    EXPECT_EQ(WriteList(ListFormat::Own, form.rows, "#ZVL20#t"), "#ZVL20#t\r\n");
    form.rows.Add({"1. A, b", "03:35", "\\m\\a.mp3"});
    form.rows.Add({"2. two\nlines", "", "/m/\xFF#.ogg"});
    EXPECT_EQ(WriteList(ListFormat::Own, form.rows, "#ZVL20#Untitled playlist"),
              "#ZVL20#Untitled playlist\r\nA, b\r\n215#\\m\\a.mp3\r\n"
              "two lines\r\n0#/m/\xED\xB3\xBF#.ogg\r\n");
    EXPECT_EQ(WriteList(ListFormat::M3u, form.rows, ""),
              "#EXTM3U\r\n#EXTINF:215,A, b\r\n\\m\\a.mp3\r\n"
              "#EXTINF:0,two lines\r\n/m/\xED\xB3\xBF#.ogg\r\n");
    EXPECT_EQ(WriteList(ListFormat::Pls, form.rows, ""),
              "[playlist]\r\nFile1=\\m\\a.mp3\r\nTitle1=A, b\r\nLength1=215\r\n"
              "File2=/m/\xED\xB3\xBF#.ogg\r\nTitle2=two lines\r\nLength2=0\r\n"
              "NumberOfEntries=2\r\nVersion=2\r\n");
}

TEST(ListFormats, ALongListComesBackInEveryFormat)
{
    ListForm form;
    for (int i = 1; i <= 10'000; ++i)
        form.rows.Add({std::to_string(i) + ". Title " + std::to_string(i),
                       FormatSeconds(i % 3600),
                       "/music/" + std::to_string(i) + "/\xC3\xB6\xFE.mp3"});
    for (const ListFormat format : {ListFormat::Own, ListFormat::M3u, ListFormat::Pls}) {
        ListForm read;
        const std::string file = WriteList(format, form.rows, "#ZVL20#");
        EXPECT_EQ(ReadList(format, file, {.numbers = true, .lengths = true}, read.rows),
                  ListOutcome::Complete);
        EXPECT_TRUE(read.All() == form.All()) << static_cast<int>(format);
    }
}

} // namespace
} // namespace velmo
