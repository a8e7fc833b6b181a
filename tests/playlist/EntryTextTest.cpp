#include "playlist/EntryText.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

TEST(EntryText, SecondsAreFormattedThroughNarrowFloats)
{
    const std::pair<std::int32_t, const char*> cases[] = {
        {0,      "00:00"    },
        {3599,   "59:59"    },
        {3600,   "01:00:00" },
        {3660,   "01:00:00" },
        {3840,   "01:04:00" },
        {4080,   "01:07:00" },
        {-1,     "59:-01"   },
        {360000, "100:00:00"},
    };
    for (const auto& [seconds, text] : cases)
        EXPECT_EQ(FormatSeconds(seconds), text) << seconds;
}

TEST(EntryText, BlanksOfFileNamesBecomeBlanks)
{
    EXPECT_EQ(ConvertUnderscores("a_b__c"), "a b  c");
    EXPECT_EQ(ConvertPercent20("a%20%b%20c%2"), "a b c%2");
    EXPECT_EQ(ConvertPercent20("%20%20%"), " 20%") << "one pass";
}

TEST(EntryText, ALeadingNumberGoesWithItsFullStopAndBlank)
{
    const std::pair<const char*, const char*> cases[] = {
        {"12. Some title",        "Some title"     },
        {"2001. A Space Odyssey", "A Space Odyssey"},
        {"5. ",                   ""               },
        {"007. Bond",             "007. Bond"      },
        {"12.Bar",                "12.Bar"         },
        {"",                      ""               },
    };
    for (const auto& [text, stripped] : cases)
        EXPECT_EQ(StripEntryNumber(text), stripped);
}

TEST(EntryText, LengthsAreReadAsTheyAreShown)
{
    const std::pair<const char*, std::int32_t> cases[] = {
        {"",         0     },
        {"01:07:00", 4020  },
        {"59:-01",   212340}, // six characters, so hours and minutes
        {"abc",      0     },
        {"1:2:3:4",  3723  },
    };
    for (const auto& [text, seconds] : cases)
        EXPECT_EQ(ParseLengthText(text), seconds) << text;
    EXPECT_TRUE(IsUnread("  "));
    EXPECT_TRUE(IsUnread("00:00"));
    EXPECT_FALSE(IsUnread("59:-01"));
}

} // namespace
} // namespace velmo
