#include "core/ProfileText.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace velmo {
namespace {

TEST(ProfileText, ReadsByTheRulesOfProfileFiles)
{
    std::string letters;
    for (int i = 0; i < 300; ++i)
        letters += "é";
    const struct
    {
        std::string file;
        std::string value; ///< of key "k" in section "s"
    } cases[] = {
        {"",                                    ""              },
        {"k=1",                                 ""              },
        {"[s]\nk=1",                            "1"             },
        {"\xEF\xBB\xBF[s]\nk=1",                "1"             },
        {"[S]\r\nK=1\r\n",                      "1"             },
        {"[s]\rk=1\r",                          "1"             },
        {" \t[ s\t] junk\n\t k \t=\t 1 2 \t\n", "1 2"           },
        {"[s]\n;k=0\n # k=0\nk\n k=1",          "1"             },
        {"[s]\nk=a;b=c",                        "a;b=c"         },
        {"[s]\nk=\" 1 \"",                      " 1 "           },
        {"[s]\nk='1'",                          "1"             },
        {"[s]\nk=\"1'",                         "\"1'"          },
        {"[s]\nk=\"",                           "\""            },
        {"[s]\nk=\"\"",                         ""              },
        {"[s]\nk=''1''",                        "'1'"           },
        {"[s]\nk=1\nk=2",                       "1"             },
        {"[s]\nk=\nk=2",                        ""              },
        {"[s]\nj=1\n[t]\nk=2\n[S]\nk=3",        ""              }, // only the first section of a name counts
        {"[t]\nk=2\n[s]\nk=3",                  "3"             },
        {"[s]\n[x=1\nk=2",                      "2"             }, // no section without its closing bracket
        {"[s]\n[]\nk=2",                        ""              },
        {"[s]\nk=" + letters,                   letters.substr(0, 508)},
        {"[s]\nk='" + letters + "'",                                     letters.substr(0,                            508)},
        {"[s]\nk=gr\xFC\xDF",                                 "grüß"                     }, // no UTF-8, so Windows-1252
    };
    for (const auto& c : cases)
        EXPECT_EQ(ProfileText(c.file).Value(" S\t", "k"), c.value) << c.file;
    const ProfileText odd("[DSP\\Effects]\nConvert%20%=x\nä=1\nÄ=2");
    EXPECT_EQ(odd.Value("dsp\\EFFECTS", "convert%20%"), "x");
    EXPECT_EQ(odd.Value("DSP\\Effects", "Ä"), "2") << "only ASCII letters lose their case in names";
}

TEST(ProfileText, ChangesNothingButTheKey)
{
    const std::string none = "(none)";
    const struct
    {
        std::string file;
        std::string section;
        std::string key;
        std::string value;
        std::string changed;
    } cases[] = {
        {"",                                 "s",   "k",    "1",        "[s]\r\nk=1\r\n"                  },
        {"[s]\nk=1\n",                       "s",   "k",    "2",        "[s]\nk=2\n"                      },
        {"[s]\nk=1\n",                       "s",   "k",    "1",        none                              },
        {"\xEF\xBB\xBF[s]\nk=1\n",           "s",   "k",    "1",        none                              },
        {"\xEF\xBB\xBF[s]\nk=1\n",           "s",   "k",    "2",        "[s]\nk=2\n"                      },
        {"; c\r\n[S]\r\n  K = 1  \r\nx\r\n", "s",   "k",    "2",        "; c\r\n[S]\r\n  K = 2  \r\nx\r\n"},
        {"[s]\nk=\n",                        "s",   "k",    "1",        "[s]\nk=1\n"                      },
        {"[s]\nk=1\n",                       "s",   "k",    "",         "[s]\nk=\n"                       },
        {"[s]\nk=1\n",                       "s",   "k",    "2\r\n[x]", "[s]\nk=2\n"                      },
        {"[s]\nk=\"1\"\n",                   "s",   "k",    "1",        "[s]\nk=1\n"                      },
        {"[s]\nk=1\nk=2\n[s]\nk=3\n",        "s",   "k",    "4",        "[s]\nk=4\nk=2\n[s]\nk=3\n"       },
        {"[s]\nk=a\n",                       "s",   "k",    " b ",      "[s]\nk= b \n"                    },
        {"[s]\nk= b \n",                     "s",   "k",    " b ",      none                              },
        {"[s]\na=1\n; end\n\n\n[t]\n",       "s",   "k",    "1",        "[s]\na=1\n; end\nk=1\n\n\n[t]\n" },
        {"[s]\r\n\r\n",                      "s",   "k",    "1",        "[s]\r\nk=1\r\n\r\n"              },
        {"[s]\na=1",                         "s",   "k",    "1",        "[s]\na=1\nk=1\n"                 },
        {"[s]",                              "s",   "k",    "1",        "[s]\r\nk=1\r\n"                  },
        {"[t]\na=1\n",                       "s",   "k",    "1",        "[t]\na=1\n\n[s]\nk=1\n"          },
        {"[t]\na=1\n \n",                    "s",   "k",    "1",        "[t]\na=1\n \n[s]\nk=1\n"         },
        {"[t]\na=1",                         "s",   "k",    "1",        "[t]\na=1\n\n[s]\nk=1\n"          },
        {"[t]\r\na=1\n",                     " s ", " k ",  "1",        "[t]\r\na=1\n\r\n[s]\r\nk=1\r\n"  },
        {"[s]\nx=\xFC\n",                    "s",   "k",    "ü",       "[s]\nx=\xFC\nk=\xFC\n"           }, // stays Windows-1252
        {"[s]\nk=1\n",                       "s",   "k",    "\xFF",     "[s]\nk=\xED\xB3\xBF\n"           },
        {"",                                 "s",   "",     "1",        none                              },
        {"",                                 "s]x", "k",    "1",        none                              },
        {"",                                 "s",   "a=b",  "1",        none                              },
        {"",                                 "s",   ";k",   "1",        none                              },
        {"",                                 "s",   "a\nb", "1",        none                              },
        {"",                                 "s\n", "k",    "1",        none                              },
    };
    for (const auto& c : cases)
        EXPECT_EQ(ChangeProfile(c.file, c.section, c.key, c.value).value_or(none), c.changed)
            << c.file;
}

TEST(ProfileText, WhatIsWrittenIsRead)
{
    for (const std::string value : {"x", "a;b", "ü", "\xFF\xFE", "[s]", "=", "Jörg's \"mix\""}) {
        std::string file = "[a]\nk=0\n\n[s]\nlast=1\n";
        for (int i = 0; i < 3; ++i)
            file = ChangeProfile(file, "s", "Key", value).value_or(file);
        EXPECT_EQ(ProfileText(file).Value("S", "key"), value);
        EXPECT_EQ(ProfileText(file).Value("s", "last"), "1");
        EXPECT_LT(file.size(), 60U) << "a repeated write adds nothing";
    }
}

} // namespace
} // namespace velmo
