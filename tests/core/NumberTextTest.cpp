#include "core/NumberText.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <utility>

namespace velmo {
namespace {

constexpr double Largest = std::numeric_limits<double>::max();
constexpr double Infinity = std::numeric_limits<double>::infinity();
constexpr double NotANumber = std::numeric_limits<double>::quiet_NaN();
constexpr std::int32_t Lowest = std::numeric_limits<std::int32_t>::min();

TEST(NumberText, ParsesTheLongestNumericPrefix)
{
    const std::string nines(400, '9');
    const std::string shifted = "0." + std::string(400, '0') + "1e400";
    const std::string hex = "&H" + std::string(400, 'F');
    const std::pair<std::string, double> cases[] = {
        {"",                       0       },
        {"16777217 front",         16777217},
        {"+7",                     7       },
        {"1,5",                    1       },
        {"-.5",                    -0.5    },
        {"5.",                     5       },
        {"-",                      0       },
        {"1.2.3",                  1.2     },
        {"1D2x",                   100     },
        {"1e+",                    1       },
        {"inf",                    0       },
        {"0x10",                   0       },
        {"&HFFFF00",               16776960},
        {"&17",                    15      },
        {"&o19",                   1       },
        {"&",                      0       },
        {"-1e999",                 -Largest},
        {"1e99999999999999999999", Largest },
        {"0.0001e-99999",          0       },
        {nines,                    Largest },
        {shifted,                  0.1     },
        {hex,                      Largest },
    };
    for (const auto& [text, value] : cases)
        EXPECT_EQ(ParseNumber(text), value) << text;
}

TEST(NumberText, RoundsHalvesToEvenAndSaturates)
{
    const std::pair<double, std::int32_t> cases[] = {
        {0.5,                 0         },
        {1.5,                 2         },
        {-0.5,                0         },
        {-1.5,                -2        },
        {2.4999,              2         },
        {-2.6,                -3        },
        {0.49999999999999994, 0         },
        {2147483646.5,        2147483646},
        {-1e300,              Lowest    },
        {Infinity,            2147483647},
        {NotANumber,          0         },
    };
    for (const auto& [value, rounded] : cases)
        EXPECT_EQ(RoundHalfEven(value), rounded) << value;
    EXPECT_EQ(Int(-0.5), -1);
}

TEST(NumberText, WritesSevenDigitsWithoutExponent)
{
    const auto expect = [](double value, const char* plain, const char* blanked) {
        EXPECT_EQ(PlainNumber(value), plain);
        EXPECT_EQ(BlankedNumber(value), blanked);
    };
    expect(-0.0, "0", " 0");
    expect(-3, "-3", "-3");
    expect(-0.5, "-0.5", "-.5");
    expect(0.05, "0.05", " .05");
    expect(3502.5, "3502.5", " 3502.5");
    expect(1.0 / 3, "0.3333333", " .3333333");
    expect(9999999.6, "10000000", " 10000000");
    expect(123456789, "123456800", " 123456800");
    expect(Infinity, "0", " 0");
    EXPECT_EQ(PlainNumber(16777217), "16777217") << "whole numbers keep all digits";
    EXPECT_EQ(TwoDigits(0) + TwoDigits(-1) + TwoDigits(123), "00-01123");
    EXPECT_EQ(TwoDigits(Lowest), "-2147483648");
}

} // namespace
} // namespace velmo
