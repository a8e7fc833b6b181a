#include "qt/QtText.h"

#include <gtest/gtest.h>

namespace velmo::qt {
namespace {

TEST(QtText, AnyBytesKeepAPlaceOfTheirOwn)
{
    const auto expect = [](std::string_view bytes, const std::u16string& text) {
        EXPECT_EQ(FromBytes(bytes).toStdU16String(), text) << bytes;
        EXPECT_EQ(ToBytes(FromBytes(bytes)), bytes);
    };
    expect("\xC3\xA4\xF0\x9F\x8E\xB5", u"\u00E4\U0001F3B5");
    expect("\xEF\xBB\xBFz", u"\uFEFFz"); // a mark is a character
    expect("a\xFFz\xE2\x82", u"a\xDCFFz\xDCE2\xDC82");
    expect("\xED\xB2\x80", u"\xDCED\xDCB2\xDC80"); // a surrogate
    expect(std::string_view("a\0b", 3), std::u16string(u"a\0b", 3));
    const QChar lone(0xD800);
    EXPECT_EQ(ToBytes(QStringView(&lone, 1)), "\xEF\xBF\xBD") << "stands for no byte";
}

} // namespace
} // namespace velmo::qt
