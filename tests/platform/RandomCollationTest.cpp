#include "linux/LocaleCollation.h"
#include "linux/SeededRandom.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace velmo {
namespace {

TEST(SeededRandom, IsBelowOneAndGoesByItsSeed)
{
    SeededRandom random;
    SeededRandom again;
    random.Seed(43200.5F);
    again.Seed(43200.5F);
    for (int i = 0; i < 100'000; ++i) {
        const float number = random.Next();
        ASSERT_EQ(number, again.Next());
        ASSERT_TRUE(number >= 0 && number < 1) << number;
    }
    random.Seed(43201.5F);
    EXPECT_NE(random.Next(), again.Next());
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
