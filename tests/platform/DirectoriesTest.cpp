#include "linux/Directories.h"

#include "linux/InstancePaths.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include <sys/stat.h>
#include <unistd.h>

namespace velmo {
namespace {

namespace fs = std::filesystem;

class DirectoriesTest : public testing::Test
{
protected:
    DirectoriesTest()
    {
        environment.home = dir("home");
        environment.executable = dir.Write("unpacked/zuvio");
        environment.currentDirectory = dir();
        environment.temporaryDirectory = dir("tmp");
        environment.userId = ::geteuid();
        fs::create_directory(dir("tmp"));
    }

    test::TempDir dir;
    Environment environment;
};

TEST_F(DirectoriesTest, ApplicationDirectoryIsChosenInThreeSteps)
{
    const std::string data = dir("home/.local/share/velmo-player/");
    EXPECT_EQ(FindDirectories(environment).program, dir("unpacked/"));
    EXPECT_EQ(FindDirectories(environment).application, dir("unpacked/")) << "portable";
    EXPECT_FALSE(fs::exists(data));

    ::chmod(dir("unpacked").c_str(), 0555);
    EXPECT_EQ(FindDirectories(environment).application, data) << "read-only";
    EXPECT_TRUE(fs::is_directory(data));
    ::chmod(dir("unpacked").c_str(), 0755);

    environment.executable = dir.Write("prefix/lib/velmo-player/zuvio");
    EXPECT_EQ(FindDirectories(environment).application, data) << "installed";
    environment.xdgDataHome = dir("xdg/data");
    EXPECT_EQ(FindDirectories(environment).application, dir("xdg/data/velmo-player/"));
    EXPECT_TRUE(fs::is_directory(dir("xdg/data/velmo-player")));
    environment.xdgDataHome = "relative";
    EXPECT_EQ(FindDirectories(environment).application, data);

    environment.velmoHome = dir("a/b");
    EXPECT_EQ(FindDirectories(environment).application, dir("a/b/"));
    EXPECT_TRUE(fs::is_directory(dir("a/b")));
    EXPECT_EQ(FindDirectories(environment).program, dir("prefix/lib/velmo-player/"));
}

TEST_F(DirectoriesTest, InstalledCopiesAreKnownByTheirPlace)
{
    const struct
    {
        std::string directory;
        bool installed;
    } cases[] = {
        {"/usr/local/games/",                          true },
        {"/opt/velmo/",                                true },
        {"/home/u/lib/velmo-player/",                  true },
        {"/home/u/.local/lib64/velmo-player",          true },
        {"/home/u/lib/x86_64-linux-gnu/velmo-player/", true },
        {"/home/u/velmo-player/",                      false},
        {"/home/u/lib/velmo/",                         false},
        {"/home/usr/",                                 false},
        {"/optional/",                                 false},
    };
    for (const auto& c : cases)
        EXPECT_EQ(IsInstalledCopy(c.directory), c.installed) << c.directory;
}

TEST_F(DirectoriesTest, InstancesMeetInAPrivateDirectory)
{
    const std::string fallback = dir("tmp/velmo-player-") + std::to_string(::geteuid()) + "/";
    EXPECT_EQ(PrepareInstancePaths(environment)->directory, fallback);
    environment.xdgRuntimeDir = dir("run");
    EXPECT_EQ(PrepareInstancePaths(environment)->directory, fallback) << "no such directory";
    fs::create_directory(dir("run"));
    EXPECT_EQ(PrepareInstancePaths(environment)->directory, dir("run/velmo-player/"));
    environment.velmoHome = dir("new/home");
    const std::string own = dir("new/home/.run/");
    EXPECT_EQ(PrepareInstancePaths(environment)->directory, own);
    EXPECT_EQ(PrepareInstancePaths(environment)->SocketOf(12), own + "12.sock");

    ::chmod(own.c_str(), 0777);
    struct stat status = {};
    EXPECT_TRUE(PrepareInstancePaths(environment).has_value());
    ::stat(own.c_str(), &status);
    EXPECT_EQ(status.st_mode & 0777, 0700U);
}

TEST_F(DirectoriesTest, APlaceOfSomebodyElseIsRefused)
{
    const std::string fallback = "velmo-player-" + std::to_string(::geteuid());
    fs::create_directory(dir("elsewhere"));
    fs::create_directory_symlink(dir("elsewhere"), dir("tmp/" + fallback));
    EXPECT_FALSE(PrepareInstancePaths(environment).has_value()) << "a link";
    fs::remove(dir("tmp/" + fallback));
    if (::geteuid() != 0)
        GTEST_SKIP() << "only the superuser can give a directory away";
    fs::create_directory(dir("tmp/" + fallback));
    ASSERT_EQ(::chown(dir("tmp/" + fallback).c_str(), 65534, 65534), 0);
    EXPECT_FALSE(PrepareInstancePaths(environment).has_value());
}

TEST_F(DirectoriesTest, LongDirectoriesMoveTheSocketsOnly)
{
    const auto paths = [&](std::size_t length) {
        environment.velmoHome = dir(std::string(length, 'h'));
        return PrepareInstancePaths(environment);
    };
    const auto first = paths(120);
    EXPECT_EQ(first->directory, environment.velmoHome + "/.run/");
    EXPECT_LE(first->SocketOf(4294967295).size(), 107U);
    EXPECT_TRUE(first->socketStem.starts_with(dir("tmp/velmo-player-")));
    EXPECT_EQ(paths(120)->socketStem, first->socketStem) << "every process finds the same";
    EXPECT_NE(paths(121)->socketStem, first->socketStem);
}

} // namespace
} // namespace velmo
