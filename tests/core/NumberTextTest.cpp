#include "core/NumberText.h"

#include <gtest/gtest.h>

#include <cfenv>
#include <limits>
#include <string>
#include <vector>

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
    const struct
    {
        std::string text;
        double value;
    } cases[] = {
        {"",                       0       },
        {"abc",                    0       },
        {" \t 12 34",              12      },
        {"16777216 front",         16777216},
        {"-3",                     -3      },
        {"+7",                     7       },
        {"67.5",                   67.5    },
        {"1,5",                    1       },
        {".5",                     0.5     },
        {"-.5",                    -0.5    },
        {"5.",                     5       },
        {".",                      0       },
        {"-",                      0       },
        {"- 3",                    0       },
        {"1.2.3",                  1.2     },
        {"1e3",                    1000    },
        {"1D2x",                   100     },
        {"25d-1",                  2.5     },
        {"1e",                     1       },
        {"1e+",                    1       },
        {"1 e3",                   1       },
        {"e3",                     0       },
        {"inf",                    0       },
        {"nan",                    0       },
        {"0x10",                   0       },
        {"&HFFFF00",               16776960},
        {"&h00ffff00&",            16776960},
        {"&H",                     0       },
        {"&HG",                    0       },
        {"-&H10",                  0       },
        {"&O17",                   15      },
        {"&17",                    15      },
        {"&o19",                   1       },
        {"&",                      0       },
        {"1e999",                  Largest },
        {"-1e999",                 -Largest},
        {"1e99999999999999999999", Largest },
        {"0e99999",                0       },
        {"1e-999",                 0       },
        {"0.0001e-99999",          0       },
        {nines,                    Largest },
        {shifted,                  0.1     },
        {hex,                      Largest },
    };
    for (const auto& c : cases)
        EXPECT_EQ(ParseNumber(c.text), c.value) << c.text;
}

TEST(NumberText, RoundsHalvesToEvenAndSaturates)
{
    const struct
    {
        double value;
        std::int32_t rounded;
    } cases[] = {
        {0.5,                 0         },
        {1.5,                 2         },
        {2.5,                 2         },
        {-0.5,                0         },
        {-1.5,                -2        },
        {-2.5,                -2        },
        {2.4999,              2         },
        {2.5001,              3         },
        {-2.6,                -3        },
        {0.49999999999999994, 0         },
        {2147483646.5,        2147483646},
        {2147483647.5,        2147483647},
        {1e300,               2147483647},
        {-1e300,              Lowest    },
        {Infinity,            2147483647},
        {NotANumber,          0         },
    };
    for (const int mode : {FE_TONEAREST, FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO}) {
        std::fesetround(mode);
        for (const auto& c : cases)
            EXPECT_EQ(RoundHalfEven(c.value), c.rounded) << c.value << " in mode " << mode;
    }
    std::fesetround(FE_TONEAREST);
    EXPECT_EQ(Int(-0.5), -1);
    EXPECT_EQ(Int(2.9), 2);
}

TEST(NumberText, WritesSevenDigitsWithoutExponent)
{
    const struct
    {
        double value;
        std::string plain;
        std::string blanked;
    } cases[] = {
        {0,         "0",         " 0"        },
        {-0.0,      "0",         " 0"        },
        {1,         "1",         " 1"        },
        {-3,        "-3",        "-3"        },
        {67.5,      "67.5",      " 67.5"     },
        {0.5,       "0.5",       " .5"       },
        {-0.5,      "-0.5",      "-.5"       },
        {0.1,       "0.1",       " .1"       },
        {0.05,      "0.05",      " .05"      },
        {3502.5,    "3502.5",    " 3502.5"   },
        {1.0 / 3,   "0.3333333", " .3333333" },
        {1234567.8, "1234568",   " 1234568"  },
        {9999999.6, "10000000",  " 10000000" },
        {123456789, "123456800", " 123456800"},
        {Infinity,  "0",         " 0"        },
    };
    for (const auto& c : cases) {
        EXPECT_EQ(PlainNumber(c.value), c.plain);
        EXPECT_EQ(BlankedNumber(c.value), c.blanked);
    }
    EXPECT_EQ(PlainNumber(16777217), "16777217") << "whole numbers keep all digits";
}

TEST(NumberText, TwoDigitsPutsTheMinusInFront)
{
    EXPECT_EQ(TwoDigits(0), "00");
    EXPECT_EQ(TwoDigits(7), "07");
    EXPECT_EQ(TwoDigits(-1), "-01");
    EXPECT_EQ(TwoDigits(123), "123");
    EXPECT_EQ(TwoDigits(std::numeric_limits<std::int32_t>::min()), "-2147483648");
}

} // namespace
} // namespace velmo
