#include "core/TextRules.h"

#include "core/UnicodePath.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace velmo {
namespace {

using Lines = std::vector<std::string_view>;

TEST(CaseRules, ComparesBySimpleFolding)
{
    const struct
    {
        std::string first;
        std::string second;
        bool equal;
    } cases[] = {
        {"True",   "tRUE",   true },
        {"true",   "true ",  false},
        {"",       "",       true },
        {"ÄÖÜ", "äöü", true },
        {"Жук", "жУК", true },
        {"ΣΑΣ", "σας", true }, // the final sigma folds to the other
        {"ß",     "SS",     false}, // simple folding keeps the length
        {"ẞ",    "ß",     true },
        {"K",      "k",      true }, // Kelvin sign
        {"i",      "İ",     false},
        {"\xFF",   "\xFF",   true },
        {"\xFF",   "ÿ",     false},
        {"\xC4",   "\xE4",   false}, // stray bytes have no case
    };
    for (const auto& c : cases)
        EXPECT_EQ(EqualsIgnoringCase(c.first, c.second), c.equal) << c.first << " " << c.second;
    EXPECT_TRUE(EqualsIgnoringAsciiCase("DSP\\Effects", "dsp\\EFFECTS"));
    EXPECT_FALSE(EqualsIgnoringAsciiCase("Ä", "ä"));
    EXPECT_EQ(UpperCase("straße \xE4 añ ÿ"), "STRAßE \xE4 AÑ Ÿ");
    EXPECT_EQ(FoldCase("ÀÉ\xC9"), "àé\xC9");
    EXPECT_TRUE(IsTrue("TRUE") && !IsTrue("1") && IsFalse("False") && !IsFalse(""));
    EXPECT_TRUE(LessIgnoringCase("a", "B") && LessIgnoringCase("A", "a")
                && !LessIgnoringCase("a", "A"));
}

TEST(CaseRules, PatternsMatchWholeNames)
{
    const std::string manyLetters(3000, 'a');
    const struct
    {
        std::string name;
        std::string pattern;
        bool matches;
    } cases[] = {
        {"a.MP3",       "*.mp3",              true },
        {"a.mp3x",      "*.mp3",              false},
        {"bassflac.so", "bass*.so",           true },
        {"bass.so",     "bass*.so",           true },
        {"aXbXc",       "a*b*c",              true },
        {"aab",         "*ab",                true },
        {"é",          "?",                  true }, // one character, two bytes
        {"\xFFq",       "?Q",                 true },
        {"",            "*",                  true },
        {"",            "?",                  false},
        {"abc",         "ab",                 false},
        {"ab",          "abc",                false},
        {"a*b",         "a*b",                true },
        {manyLetters,   "*a*a*a*a*a*a*a*a*b", false}, // must not take for ever
    };
    for (const auto& c : cases)
        EXPECT_EQ(MatchesPattern(c.name, c.pattern), c.matches) << c.name << " " << c.pattern;
}

TEST(TextRules, CharactersAreCodePointsAndNeverCut)
{
    const std::string text = "aé€\U0001F600\xFFz";
    EXPECT_EQ(CountCharacters(text), 6U);
    EXPECT_EQ(FirstCharacters(text, 4), "aé€\U0001F600");
    EXPECT_EQ(FirstCharacters(text, 99), text);
    EXPECT_EQ(LastCharacters(text, 3), "\U0001F600\xFFz");
    EXPECT_EQ(LastCharacters(text, 0), "");

    const std::string characters = text.substr(0, 10);
    const struct
    {
        std::string bytes;
        bool valid;
    } cases[] = {
        {characters,         true },
        {"\xC0\xAF",         false}, // overlong
        {"\xE0\x80\xAF",     false}, // overlong
        {"\xED\xA0\x80",     false}, // surrogate
        {"\xF4\x90\x80\x80", false}, // beyond U+10FFFF
        {"\xF5\x80\x80\x80", false},
        {"\xE2\x82",         false}, // cut
        {"\x80",             false},
    };
    for (const auto& c : cases)
        EXPECT_EQ(IsValidUtf8(c.bytes), c.valid) << c.bytes;
}

TEST(TextRules, TrimsAndSplits)
{
    EXPECT_EQ(TrimBlanks("  a b\t "), "a b\t");
    EXPECT_EQ(TrimBlanks("   "), "");
    EXPECT_EQ(TrimBlanksAndTabs("\t a \t"), "a");
    EXPECT_EQ(SplitLines("a\r\nb\nc\rd"), (Lines{"a", "b", "c", "d"}));
    EXPECT_EQ(SplitLines("a\r\n\r\n"), (Lines{"a", ""}));
    EXPECT_EQ(SplitLines("a\n\rb"), (Lines{"a", "", "b"}));
    EXPECT_EQ(SplitLines(""), Lines{});
    EXPECT_EQ(SplitLines("\n"), Lines{""});
}

TEST(TextRules, FilesAreUtf8ElseWindows1252)
{
    EXPECT_EQ(DecodeFileText("\xEF\xBB\xBFVZL"), "VZL");
    EXPECT_EQ(DecodeFileText("\xEF\xBB\xBF\xEF\xBB\xBFx"), "\xEF\xBB\xBFx") << "one mark only";
    EXPECT_EQ(DecodeFileText("gr\xC3\xBC\xC3\x9F"), "grüß");
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
    text += "\xED\xB3\xBF \xED\xB2\x80"; // what a stray byte looks like in a file, as a name's own
                                         // bytes
    text += "\U0001F600";
    EXPECT_EQ(DecodeFileText(EncodeFileText(text)), text);
    EXPECT_EQ(FromUtf16(ToUtf16(text)), text);
    EXPECT_EQ(EncodeFileText("é\xFF"), "é\xED\xB3\xBF");
    EXPECT_EQ(ToUtf16("a\xFFé\U0001F600"), u"a\xDCFFé\U0001F600");
    EXPECT_EQ(FromUtf16(std::u16string{0xD800, u'x', 0xDC01}), "\uFFFDx\uFFFD");
}

} // namespace
} // namespace velmo
