#include "linux/LinuxMixerProgram.h"

#include "support/TempDir.h"

#include <gmock/gmock.h>

#include <chrono>
#include <cstdlib>
#include <sstream>
#include <thread>

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
        "pavucontrol",
        "#!/bin/sh\ncut -d' ' -f1,4,6 /proc/$$/stat > \"$0.new\"; mv \"$0.new\" \"$0.out\"\n");
    ::chmod(program.c_str(), 0755);
    const std::string before = ::getenv("PATH");               // NOLINT(concurrency-mt-unsafe)
    ::setenv("PATH", (directory() + ":" + before).c_str(), 1); // NOLINT(concurrency-mt-unsafe)
    LinuxMixerProgram().Start();
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (directory.Read("pavucontrol.out").empty() && std::chrono::steady_clock::now() < deadline)
        std::this_thread::yield();
    ::setenv("PATH", before.c_str(), 1); // NOLINT(concurrency-mt-unsafe)
    std::istringstream words(directory.Read("pavucontrol.out"));
    pid_t process = 0;
    pid_t parent = 0;
    pid_t session = 0;
    words >> process >> parent >> session;
    EXPECT_GT(process, 0);
    EXPECT_NE(parent, ::getpid());
    EXPECT_NE(session, ::getsid(0));
}

} // namespace
} // namespace velmo
