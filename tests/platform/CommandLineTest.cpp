#include "linux/CommandLine.h"

#include "support/FakeFiles.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace velmo {
namespace {

TEST(CommandLine, IsOneRawText)
{
    test::FakeFiles files;
    files.files = {
        {"/start/My song.mp3", ""},
        {"/start/sub/a.mp3",   ""},
        {"/start/C:\\x",       ""}
    };
    files.directories = {"/start/folder"};
    using Arguments = std::vector<std::string>;
    const struct
    {
        Arguments arguments;
        std::string text;
    } cases[] = {
        {Arguments{},                                   ""                       },
        {Arguments{"/a/My", "song.mp3"},                "/a/My song.mp3"         },
        {Arguments{"My", "song.mp3"},                   "/start/My song.mp3"     },
        {Arguments{"sub/a.mp3"},                        "/start/sub/a.mp3"       },
        {Arguments{"folder"},                           "/start/folder"          },
        {Arguments{"none.mp3"},                         "none.mp3"               },
        {Arguments{"http://host/My song.mp3"},          "http://host/My song.mp3"},
        {Arguments{"C:\\x"},                            "C:\\x"                  }, // its shape makes it absolute
        {Arguments{"file:///a/My%20song%C3%bc%FF.mp3"}, "/a/My songü\xFF.mp3"   },
        {Arguments{"FILE://localhost/a%2"},             "/a%2"                   },
        {Arguments{"file:///a%zz%"},                    "/a%zz%"                 },
        {Arguments{"file:///a#b?c"},                    "/a#b?c"                 },
    };
    for (const auto& c : cases)
        EXPECT_EQ(CommandLineText(c.arguments, "/start", files), c.text);
}

} // namespace
} // namespace velmo
