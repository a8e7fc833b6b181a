#include "linux/LinuxMixerProgram.h"

#include "support/TempDir.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <fstream>

#include <sys/stat.h>
#include <unistd.h>

namespace velmo {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(MixerProgram, IsTheFirstOfTheKnownOnesThatCanBeRun)
{
    const test::TempDir directory;
    const auto install = [&](const std::string& name, mode_t mode) {
        std::string path = directory.Write(name, "#!/bin/sh\n");
        ::chmod(path.c_str(), mode);
        return path;
    };
    const std::string searchPath =
        directory("none") + ":relative:" + directory("b") + ":" + directory("a");
    EXPECT_THAT(FindMixerProgram(searchPath), IsEmpty());
    install("a/pavucontrol", 0644);
    const std::string settings = install("a/gnome-control-center", 0755);
    EXPECT_THAT(FindMixerProgram(searchPath), ElementsAre(settings, "sound"));
    const std::string kmix = install("a/kmix", 0755);
    EXPECT_THAT(FindMixerProgram(searchPath), ElementsAre(kmix));
    const std::string first = install("b/kmix", 0755);
    EXPECT_THAT(FindMixerProgram(searchPath), ElementsAre(first));
}

/// It is no child of this process, and it runs in a session of its own.
TEST(MixerProgram, IsStartedDetached)
{
    const test::TempDir directory;
    const std::string program = directory.Write(
        "pavucontrol", "#!/bin/sh\nexec cut -d' ' -f4,6 /proc/self/stat > \"$0.out\"\n");
    ::chmod(program.c_str(), 0755);
    ::mkfifo(directory("pavucontrol.out").c_str(), 0600);
    const std::string before = ::getenv("PATH");
    ::setenv("PATH", (directory() + ":" + before).c_str(), 1);
    LinuxMixerProgram().Start();
    pid_t parent = ::getpid();
    pid_t session = ::getsid(0);
    std::ifstream(directory("pavucontrol.out")) >> parent >> session; // waits for the program
    ::setenv("PATH", before.c_str(), 1);
    EXPECT_NE(parent, ::getpid());
    EXPECT_NE(session, ::getsid(0));
}

} // namespace
} // namespace velmo
