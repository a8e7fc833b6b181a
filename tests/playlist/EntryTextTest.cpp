#include "playlist/EntryText.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

TEST(EntryText, SecondsAreFormattedThroughNarrowFloats)
{
    const std::pair<std::int32_t, const char*> cases[] = {
        {3599,   "59:59"    },
        {3600,   "01:00:00" },
        {3840,   "01:04:00" },
        {4080,   "01:07:00" },
        {-1,     "59:-01"   },
        {360000, "100:00:00"},
    };
    for (const auto& [seconds, text] : cases)
        EXPECT_EQ(FormatSeconds(seconds), text) << seconds;
}

TEST(EntryText, NumbersAndBlanksAreTakenFromATitle)
{
    EXPECT_EQ(ConvertUnderscores("a_b__c"), "a b  c");
    EXPECT_EQ(ConvertPercent20("%20%20%c%2"), " 20%c%2") << "one pass";
    EXPECT_EQ(StripEntryNumber("2001. A Space Odyssey"), "A Space Odyssey");
    EXPECT_EQ(StripEntryNumber("5. "), "");
    for (const char* kept : {"007. Bond", "12.Bar"})
        EXPECT_EQ(StripEntryNumber(kept), kept);
}

TEST(EntryText, LengthsAreReadAsTheyAreShown)
{
    EXPECT_EQ(ParseLengthText(""), 0);
    EXPECT_EQ(ParseLengthText("01:07:00"), 4020);
    EXPECT_EQ(ParseLengthText("59:-01"), 212340) << "six characters, so hours and minutes";
    EXPECT_EQ(ParseLengthText("1:2:3:4"), 3723);
    EXPECT_TRUE(IsUnread("  ") && IsUnread("00:00") && !IsUnread("59:-01"));
}

} // namespace
} // namespace velmo
