#include "core/PathRules.h"

#include "support/FakeFiles.h"

#include <gtest/gtest.h>

#include <string>

namespace velmo {
namespace {

TEST(PathRules, ShapeComesFromTheTextAlone)
{
    using enum PathShape;
    const auto expect = [](const std::string& path,
                           PathShape shape,
                           const std::string& directory,
                           const std::string& name,
                           char added) {
        EXPECT_EQ(ShapeOf(path), shape) << path;
        EXPECT_EQ(SplitPath(path).directory, directory) << path;
        EXPECT_EQ(SplitPath(path).name, name) << path;
        EXPECT_EQ(EnsureTrailingBackslash(path), added == '\0' ? path : path + added);
    };
    expect("", Posix, "", "", '/');
    expect("/", Posix, "/", "", '\0');
    expect("/x/a\\b.mp3", Posix, "/x/", "a\\b.mp3", '/');
    expect("C:\\x\\", Windows, "C:\\x\\", "", '\0');
    expect("é:x", Windows, "", "é:x", '\\');
    expect("C:/x/y", Posix, "C:/x/", "y", '/');
    expect("ab:c", Posix, "", "ab:c", '/');
    expect(R"(\\server\x)", Windows, R"(\\server\)", "x", '\\');
}

TEST(PathRules, FileDirectoryKeepsTheCaseOfPosixPaths)
{
    test::FakeFiles files;
    files.current = "/home/u";
    EXPECT_EQ(FileDirectory("\\Mä\\x.mp3", files), "\\MÄ\\");
    EXPECT_EQ(FileDirectory("/home/u/Music/a.mp3", files), "/home/u/Music/");
    EXPECT_EQ(FileDirectory("c:a.mp3", files), "/home/u/");
}

} // namespace
} // namespace velmo
