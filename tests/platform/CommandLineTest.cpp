#include "linux/CommandLine.h"

#include "support/FakeFiles.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace velmo {
namespace {

TEST(CommandLine, IsOneRawText)
{
    test::FakeFiles files;
    files.files = {
        {"/start/My song.mp3", ""},
        {"/start/C:\\x",       ""}
    };
    files.directories = {"/start/folder"};
    using Arguments = std::vector<std::string>;
    const std::pair<Arguments, std::string> cases[] = {
        {Arguments{},                                   ""                       },
        {Arguments{"My", "song.mp3"},                   "/start/My song.mp3"     },
        {Arguments{"folder"},                           "/start/folder"          },
        {Arguments{"http://host/My song.mp3"},          "http://host/My song.mp3"},
        {Arguments{"C:\\x"},                            "C:\\x"                  }, // its shape makes it absolute
        {Arguments{"file:///a/My%20song%C3%bc%FF.mp3"}, "/a/My songü\xFF.mp3"   },
        {Arguments{"FILE://localhost/a%2"},             "/a%2"                   },
        {Arguments{"file:///a%zz%"},                    "/a%zz%"                 },
        {Arguments{"file:///a#b?c"},                    "/a#b?c"                 },
    };
    for (const auto& [arguments, text] : cases)
        EXPECT_EQ(CommandLineText(arguments, "/start", files), text);
}

} // namespace
} // namespace velmo
