#include "core/PathRules.h"

#include "support/FakeFiles.h"

#include <gtest/gtest.h>

#include <string>

namespace velmo {
namespace {

TEST(PathRules, ShapeComesFromTheTextAlone)
{
    const struct
    {
        std::string path;
        PathShape shape;
        std::string directory;
        std::string name;
        std::string ensured;
    } cases[] = {
        {"",              PathShape::Posix,   "",             "",         "/"             },
        {"music",         PathShape::Posix,   "",             "music",    "music/"        },
        {"/",             PathShape::Posix,   "/",            "",         "/"             },
        {"/x",            PathShape::Posix,   "/",            "x",        "/x/"           },
        {"/x/a\\b.mp3",   PathShape::Posix,   "/x/",          "a\\b.mp3", "/x/a\\b.mp3/"  },
        {"C:\\x",         PathShape::Windows, "C:\\",         "x",        "C:\\x\\"       },
        {"C:\\x\\",       PathShape::Windows, "C:\\x\\",      "",         "C:\\x\\"       },
        {"c:",            PathShape::Windows, "",             "c:",       "c:\\"          },
        {"é:x",          PathShape::Windows, "",             "é:x",     "é:x\\"        },
        {"a\\b",          PathShape::Windows, "a\\",          "b",        "a\\b\\"        },
        {"C:/x/y",        PathShape::Posix,   "C:/x/",        "y",        "C:/x/y/"       },
        {"ab:c",          PathShape::Posix,   "",             "ab:c",     "ab:c/"         },
        {R"(\\server\x)", PathShape::Windows, R"(\\server\)", "x",        R"(\\server\x\)"},
    };
    for (const auto& c : cases) {
        const PathParts parts = SplitPath(c.path);
        EXPECT_EQ(ShapeOf(c.path), c.shape) << c.path;
        EXPECT_EQ(parts.directory, c.directory) << c.path;
        EXPECT_EQ(parts.name, c.name) << c.path;
        EXPECT_EQ(EnsureTrailingBackslash(c.path), c.ensured) << c.path;
    }
}

TEST(PathRules, FileDirectoryKeepsTheCaseOfPosixPaths)
{
    test::FakeFiles files;
    files.current = "/home/u";
    const struct
    {
        std::string path;
        std::string directory;
    } cases[] = {
        {"C:\\Music\\ä.mp3",   "C:\\MUSIC\\"   },
        {"\\ä\\x",             "\\Ä\\"        },
        {"\\a.mp3",             "\\"            },
        {"/home/u/Music/a.mp3", "/home/u/Music/"},
        {"/a.mp3",              "/"             },
        {"a.mp3",               "/home/u/"      },
        {"c:a.mp3",             "/home/u/"      },
        {"",                    "/home/u/"      },
    };
    for (const auto& c : cases)
        EXPECT_EQ(FileDirectory(c.path, files), c.directory) << c.path;
}

} // namespace
} // namespace velmo
