#include "playlist/EntryText.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

TEST(EntryText, SecondsAreFormattedThroughNarrowFloats)
{
    const std::pair<std::int32_t, const char*> cases[] = {
        {0,      "00:00"    },
        {59,     "00:59"    },
        {60,     "01:00"    },
        {3599,   "59:59"    },
        {3600,   "01:00:00" },
        {36000,  "10:00:00" },
        {3660,   "01:00:00" },
        {3720,   "01:01:00" },
        {3780,   "01:02:00" },
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
    EXPECT_EQ(ConvertPercent20("%20%20%"), " 20%");
}

} // namespace
} // namespace velmo
