#include "core/TextRules.h"

#include "core/UnicodePath.h"

#include <gtest/gtest.h>

#include <string>

namespace velmo {
namespace {

TEST(CaseRules, ComparesBySimpleFolding)
{
    EXPECT_TRUE(EqualsIgnoringCase("ΣΑΣ", "σας")) << "the final sigma folds to the other";
    EXPECT_FALSE(EqualsIgnoringCase("ß", "SS")) << "simple folding keeps the length";
    EXPECT_TRUE(EqualsIgnoringCase("\u212A", "k")) << "Kelvin sign";
    EXPECT_FALSE(EqualsIgnoringCase("\xFF", "ÿ"));
    EXPECT_EQ(UpperCase("straße \xE4 añ ÿ"), "STRAßE \xE4 AÑ Ÿ");
    EXPECT_EQ(FoldCase("ÀÉ\xC9"), "àé\xC9");
    EXPECT_TRUE(LessIgnoringCase("A", "a") && !LessIgnoringCase("a", "A"));
}

TEST(CaseRules, PatternsMatchWholeNames)
{
    EXPECT_FALSE(MatchesPattern("a.mp3x", "*.mp3"));
    EXPECT_TRUE(MatchesPattern("aab", "*ab"));
    EXPECT_TRUE(MatchesPattern("é", "?")) << "one character, two bytes";
    EXPECT_TRUE(MatchesPattern("\xFFq", "?Q"));
    EXPECT_FALSE(MatchesPattern(std::string(3000, 'a'), "*a*a*a*a*a*a*a*a*b"))
        << "must not take for ever";
}

TEST(TextRules, CharactersAreCodePointsAndNeverCut)
{
    const std::string text = "aé€\U0001F600\xFFz";
    EXPECT_EQ(CountCharacters(text), 6U);
    EXPECT_EQ(FirstCharacters(text, 4), "aé€\U0001F600");
    EXPECT_EQ(LastCharacters(text, 3), "\U0001F600\xFFz");
    EXPECT_TRUE(IsValidUtf8(text.substr(0, 10)));
    // Overlong, a surrogate, beyond U+10FFFF, cut, a stray byte.
    for (const char* bytes : {"\xC0\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xE2\x82", "\x80"})
        EXPECT_FALSE(IsValidUtf8(bytes)) << bytes;
}

TEST(TextRules, FilesAreUtf8ElseWindows1252)
{
    EXPECT_EQ(DecodeFileText("\xEF\xBB\xBF\xEF\xBB\xBFx"), "\xEF\xBB\xBFx") << "one mark only";
    EXPECT_EQ(DecodeFileText("gr\xFC\xDF \x80\x9F\x81"), "grüß €Ÿ\u0081");
    EXPECT_EQ(DecodeFileText("\xC3\xBC and \xFC"), "Ã¼ and ü")
        << "one stray byte decides for the file";
    EXPECT_EQ(EncodeWindows1252("grüß € Ж"), "gr\xFC\xDF \x80 ?");
}

TEST(TextRules, EveryByteSurvivesFileAndUtf16)
{
    std::string text = "é \xC3 ";
    for (int byte = 0; byte < 256; ++byte)
        text += static_cast<char>(byte);
    // What a stray byte looks like in a file, as a name's own bytes.
    text += "\xED\xB3\xBF \xED\xB2\x80 \U0001F600";
    EXPECT_EQ(DecodeFileText(EncodeFileText(text)), text);
    EXPECT_EQ(FromUtf16(ToUtf16(text)), text);
    EXPECT_EQ(EncodeFileText("é\xFF"), "é\xED\xB3\xBF");
    EXPECT_EQ(ToUtf16("a\xFFé\U0001F600"), u"a\xDCFFé\U0001F600");
    EXPECT_EQ(FromUtf16(std::u16string{0xD800, u'x', 0xDC01}), "\uFFFDx\uFFFD");
}

} // namespace
} // namespace velmo
