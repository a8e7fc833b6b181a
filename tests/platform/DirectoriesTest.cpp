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
        fs::create_directory(dir("home"));
    }

    test::TempDir dir;
    Environment environment;
};

TEST_F(DirectoriesTest, ApplicationDirectoryIsChosenInThreeSteps)
{
    const std::string data = dir("home/.local/share/velmo-player/");
    EXPECT_EQ(FindDirectories(environment).application, dir("unpacked/")) << "portable";
    EXPECT_FALSE(fs::exists(data));

    ::chmod(dir("unpacked").c_str(), 0555);
    EXPECT_EQ(FindDirectories(environment).application, data) << "read-only";
    ::chmod(dir("unpacked").c_str(), 0755);

    environment.executable = dir.Write("prefix/lib/velmo-player/zuvio");
    EXPECT_EQ(FindDirectories(environment).application, data) << "installed";
    environment.xdgDataHome = dir("xdg/data");
    EXPECT_EQ(FindDirectories(environment).application, dir("xdg/data/velmo-player/"));
    environment.xdgDataHome = "relative";
    EXPECT_EQ(FindDirectories(environment).application, data);

    environment.velmoHome = dir("a/b");
    EXPECT_EQ(FindDirectories(environment).application, dir("a/b/"));
    EXPECT_TRUE(fs::is_directory(dir("a/b")));
    EXPECT_EQ(FindDirectories(environment).program, dir("prefix/lib/velmo-player/"));
}

TEST_F(DirectoriesTest, InstalledCopiesAreKnownByTheirPlace)
{
    for (const char* installed : {"/usr/local/games/",
                                  "/home/u/.local/lib64/velmo-player",
                                  "/home/u/lib/x86_64-linux-gnu/velmo-player/"})
        EXPECT_TRUE(IsInstalledCopy(installed)) << installed;
    for (const char* unpacked : {"/home/u/velmo-player/", "/home/u/lib/velmo/", "/optional/"})
        EXPECT_FALSE(IsInstalledCopy(unpacked)) << unpacked;
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
    EXPECT_EQ(PrepareInstancePaths(environment)->SocketOf(12), own + "12.sock");
    ::chmod(own.c_str(), 0777);
    EXPECT_EQ(PrepareInstancePaths(environment)->directory, own);
    EXPECT_EQ(fs::status(own).permissions(), fs::perms::owner_all);
    environment.velmoHome = dir(std::string(120, 'h')); // no place for a socket's long path
    const std::string stem = PrepareInstancePaths(environment)->socketStem;
    EXPECT_TRUE(stem.starts_with(fallback)) << stem;
    environment.velmoHome += 'h';
    EXPECT_NE(PrepareInstancePaths(environment)->socketStem, stem);
}

TEST_F(DirectoriesTest, APlaceOfSomebodyElseIsRefused)
{
    const std::string fallback = dir("tmp/velmo-player-") + std::to_string(::geteuid());
    fs::create_directory_symlink(dir("home"), fallback);
    EXPECT_FALSE(PrepareInstancePaths(environment).has_value()) << "a link";
    fs::remove(fallback);
    fs::create_directory(fallback);
    if (::chown(fallback.c_str(), 65534, 65534) != 0)
        GTEST_SKIP() << "only the superuser can give a directory away";
    EXPECT_FALSE(PrepareInstancePaths(environment).has_value());
}

} // namespace
} // namespace velmo
