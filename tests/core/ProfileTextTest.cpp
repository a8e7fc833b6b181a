#include "core/ProfileText.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>

namespace velmo {
namespace {

TEST(ProfileText, ReadsByTheRulesOfProfileFiles)
{
    // A file, and the value of key "k" in section "s".
    const std::pair<std::string, std::string> cases[] = {
        {"\xEF\xBB\xBF[s]\nk=1",                "1"     },
        {"[S]\r\nK=1\r\n",                      "1"     },
        {" \t[ s\t] junk\n\t k \t=\t 1 2 \t\n", "1 2"   },
        {"[s]\n;k=0\n # k=0\nk\n k=1",          "1"     },
        {"[s]\nk=a;b=c",                        "a;b=c" },
        {"[s]\nk=\" 1 \"",                      " 1 "   },
        {"[s]\nk=\"1'",                         "\"1'"  },
        {"[s]\nk=''1''",                        "'1'"   },
        {"[s]\nk=\"",                           "\""    },
        {"[s]\nk=\nk=2",                        ""      },
        {"[s]\nj=1\n[t]\nk=2\n[S]\nk=3",        ""      }, // only the first section of a name counts
        {"[s]\n[x=1\nk=2",                      "2"     }, // no section without its closing bracket
        {"[s]\n[]\nk=2",                        ""      },
        {"[s]\nk=gr\xFC\xDF",                   "grüß"}, // no UTF-8, so Windows-1252
    };
    for (const auto& [file, value] : cases)
        EXPECT_EQ(ProfileText(file).Value(" S\t", "k"), value) << file;
    EXPECT_EQ(ProfileText("[s]\nä=1\nÄ=2").Value("S", "Ä"), "2")
        << "only ASCII letters lose their case in names";
    std::string longest;
    while (longest.size() < 508) // bytes of 254 characters
        longest += "é";
    for (const std::string quote : {"", "'"})
        EXPECT_EQ(ProfileText("[s]\nk=" + quote + longest + "é" + quote).Value("s", "k"), longest);
}

TEST(ProfileText, ChangesNothingButTheKey)
{
    const std::string none = "(none)";
    const auto expect = [&](const char* file, const char* value, const std::string& changed) {
        EXPECT_EQ(ChangeProfile(file, " s ", "\tk ", value).value_or(none), changed) << file;
    };
    expect("[s]\nk=1\n", "1", none);
    expect("\xEF\xBB\xBF[s]\nk=1\n", "1", none);
    expect("\xEF\xBB\xBF[s]\nk=1\n", "2", "[s]\nk=2\n");
    expect("; c\r\n[S]\r\n  K = 1  \r\nx\r\n", "2", "; c\r\n[S]\r\n  K = 2  \r\nx\r\n");
    expect("[s]\nk=1\n", "2\r\n[x]", "[s]\nk=2\n");
    expect("[s]\nk=1\nk=2\n[s]\nk=3\n", "4", "[s]\nk=4\nk=2\n[s]\nk=3\n");
    expect("[s]\nk=a\n", " b ", "[s]\nk= b \n");
    expect("[s]\nk= b \n", " b ", none);
    expect("[s]\na=1\n; end\n\n\n[t]\n", "1", "[s]\na=1\n; end\nk=1\n\n\n[t]\n");
    expect("[s]\na=1", "1", "[s]\na=1\nk=1\n");
    expect("[t]\na=1\n \n", "1", "[t]\na=1\n \n[s]\nk=1\n");
    expect("[t]\na=1", "1", "[t]\na=1\n\n[s]\nk=1\n");
    expect("[t]\r\na=1\n", "1", "[t]\r\na=1\n\r\n[s]\r\nk=1\r\n");
    expect("[s]\nx=\xFC\n", "ü", "[s]\nx=\xFC\nk=\xFC\n"); // stays Windows-1252
    expect("[s]\nk=1\n", "\xFF", "[s]\nk=\xED\xB3\xBF\n");
    for (const char* key : {"", "a=b", ";k", "a\nb"})
        EXPECT_FALSE(ChangeProfile("", "s", key, "1").has_value()) << key;
    EXPECT_FALSE(ChangeProfile("", "s]x", "k", "1").has_value());
}

TEST(ProfileText, WhatIsWrittenIsReadAndWrittenOnce)
{
    for (const std::string value : {"a;b", "ü", "\xFF\xFE", "[s]", "=", "Jörg's \"mix\""}) {
        const std::string file = ChangeProfile("[s]\nlast=1\n", "s", "Key", value).value_or("");
        EXPECT_EQ(ProfileText(file).Value("S", "key"), value);
        EXPECT_FALSE(ChangeProfile(file, "s", "Key", value).has_value());
    }
}

} // namespace
} // namespace velmo
