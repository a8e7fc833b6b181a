#include "qt/QtText.h"

#include <gtest/gtest.h>

#include <random>

namespace velmo::qt {
namespace {

TEST(QtText, BytesThatAreNoTextKeepAPlaceOfTheirOwn)
{
    struct Case
    {
        std::string_view bytes;
        std::u16string text;
    };
    const Case cases[] = {
        {"",                     u""                        },
        {"plain",                u"plain"                   },
        {"\xC3\xA4\xE2\x82\xAC", u"\u00E4\u20AC"            },
        {"\xF0\x9F\x8E\xB5",     u"\U0001F3B5"              },
        {"\xEF\xBB\xBFz",        u"\uFEFFz"                 }, // a mark is a character
        {"a\xFFz",               u"a\xDCFFz"                },
        {"\xC3",                 u"\xDCC3"                  }, // cut off
        {"\xE2\x82",             u"\xDCE2\xDC82"            },
        {"\xC0\x80",             u"\xDCC0\xDC80"            }, // overlong
        {"\xED\xB2\x80",         u"\xDCED\xDCB2\xDC80"      }, // a surrogate
        {"\xF4\x90\x80\x80",     u"\xDCF4\xDC90\xDC80\xDC80"},
    };
    for (const Case& c : cases) {
        const QString text = FromBytes(c.bytes);
        EXPECT_EQ(text.toStdU16String(), c.text) << c.bytes;
        EXPECT_EQ(ToBytes(text), c.bytes);
    }
    const std::string withZero("a\0b", 3);
    EXPECT_EQ(FromBytes(withZero).size(), 3);
    EXPECT_EQ(ToBytes(FromBytes(withZero)), withZero);
}

TEST(QtText, AnyBytesComeBackAsTheyWere)
{
    std::mt19937 random(1); // every run tries the same
    for (int round = 0; round < 3000; ++round) {
        std::string bytes(random() % 12, '\0');
        for (char& byte : bytes)
            byte = static_cast<char>(random() % 3 == 0 ? random() % 128 : 0x80 + random() % 128);
        EXPECT_EQ(ToBytes(FromBytes(bytes)), bytes);
    }
}

TEST(QtText, SurrogateThatStandsForNoByteIsReplaced)
{
    for (const char16_t lone : {char16_t{0xD800}, char16_t{0xDC7F}, char16_t{0xDD00}}) {
        const QChar unit(lone);
        EXPECT_EQ(ToBytes(QStringView(&unit, 1)), "\xEF\xBF\xBD");
    }
}

} // namespace
} // namespace velmo::qt
