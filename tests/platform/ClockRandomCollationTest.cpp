#include "linux/LocaleCollation.h"
#include "linux/SeededRandom.h"
#include "linux/SystemClock.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <vector>

namespace velmo {
namespace {

TEST(SeededRandom, IsUniformBelowOneAndGoesByItsSeed)
{
    SeededRandom random;
    SeededRandom again;
    random.Seed(43200.5F);
    again.Seed(43200.5F);
    std::vector<int> tenths(10);
    for (int i = 0; i < 100'000; ++i) {
        const float number = random.Next();
        ASSERT_EQ(number, again.Next());
        ASSERT_GE(number, 0.0F);
        ASSERT_LT(number, 1.0F);
        ++tenths[static_cast<std::size_t>(number * 10)];
    }
    // Of 100,000 draws one tenth has 10,000 with a deviation of 95.
    EXPECT_THAT(tenths,
                ::testing::Each(::testing::AllOf(::testing::Gt(9500), ::testing::Lt(10500))));
    random.Seed(43201.5F);
    EXPECT_NE(random.Next(), again.Next());
}

TEST(SystemClock, ItsTextsAndSecondsAreOneTime)
{
    SystemClock clock;
    EXPECT_THAT(clock.DateText(), ::testing::MatchesRegex("[01][0-9]-[0-3][0-9]-[0-9]{4}"));
    float seconds = 0;
    std::string text;
    do {
        text = clock.TimeText();
        seconds = clock.SecondsSinceMidnight();
    } while (clock.TimeText() != text);
    const int told = std::stoi(text.substr(0, 2)) * 3600 + std::stoi(text.substr(3, 2)) * 60
                     + std::stoi(text.substr(6, 2));
    EXPECT_EQ(static_cast<int>(seconds), told);
}

std::vector<std::string> Sorted(const std::string& locale, std::vector<std::string> texts)
{
    LocaleCollation collation(locale);
    std::stable_sort(texts.begin(), texts.end(), [&](const auto& a, const auto& b) {
        return collation.SortKey(a) < collation.SortKey(b);
    });
    return texts;
}

TEST(LocaleCollation, CaseCountsForNothingAndLettersGoByTheLocale)
{
    const std::vector<std::string> texts{"b", "É", "A", "é", "a", "10", "9", "\xFF", "Z"};
    const std::vector<std::string> byCode{"10", "9", "A", "a", "b", "Z", "É", "é", "\xFF"};
    for (const char* locale : {"C.UTF-8", "no_SUCH.locale"})
        EXPECT_EQ(Sorted(locale, texts), byCode) << locale;
    const std::string longText(100'000, 'x');
    LocaleCollation user;
    EXPECT_LT(user.SortKey(longText), user.SortKey(longText + "Y"));
    if (::newlocale(LC_ALL_MASK, "en_US.UTF-8", nullptr) == nullptr)
        GTEST_SKIP() << "no such locale on this machine";
    const std::vector<std::string> sorted = Sorted("en_US.UTF-8", texts);
    EXPECT_LT(std::find(sorted.begin(), sorted.end(), "É"),
              std::find(sorted.begin(), sorted.end(), "Z"));
}

} // namespace
} // namespace velmo
