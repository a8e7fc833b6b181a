#include "linux/ReplaceFile.h"

#include "support/ChildProcess.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>
#include <sched.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>
#include <string_view>

#include <fcntl.h>
#include <poll.h>
#include <sys/mount.h>
#include <sys/stat.h>

namespace velmo {
namespace {

namespace fs = std::filesystem;
using ports::WriteResult;

class ReplaceFileTest : public testing::Test
{
protected:
    fs::perms ModeOf(const std::string& name) const { return fs::status(dir(name)).permissions(); }

    long FileCount() const
    {
        return std::distance(fs::directory_iterator(dir()), fs::directory_iterator());
    }

    test::TempDir dir;
};

TEST_F(ReplaceFileTest, ModeIsKeptAndNewFilesGetTheirs)
{
    EXPECT_EQ(ReplaceFileAt(dir("new"), "x", 0600), WriteResult::Written);
    EXPECT_EQ(ModeOf("new"), fs::perms{0600});
    dir.Write("old", "long content");
    ::chmod(dir("old").c_str(), 0664);
    EXPECT_EQ(ReplaceFileAt(dir("old"), "y", 0600), WriteResult::Written);
    EXPECT_EQ(ModeOf("old"), fs::perms{0664});
    EXPECT_EQ(dir.Read("old"), "y");
    EXPECT_EQ(FileCount(), 2);
}

TEST_F(ReplaceFileTest, LinksAreFollowedAndStay)
{
    dir.Write("data/real", "old");
    fs::create_symlink("data/hop", dir("link"));
    fs::create_symlink("real", dir("data/hop"));
    fs::create_symlink(dir("data/fresh"), dir("dangling"));
    fs::create_symlink("loop", dir("loop"));
    EXPECT_EQ(ReplaceFileAt(dir("link"), "new", 0600), WriteResult::Written);
    EXPECT_EQ(dir.Read("data/real"), "new");
    EXPECT_TRUE(fs::is_symlink(dir("link")) && fs::is_symlink(dir("data/hop")));
    EXPECT_EQ(ReplaceFileAt(dir("dangling"), "made", 0600), WriteResult::Written);
    EXPECT_EQ(dir.Read("data/fresh"), "made");
    EXPECT_EQ(ReplaceFileAt(dir("loop"), "x", 0600), WriteResult::Failed);
}

TEST_F(ReplaceFileTest, FailureLeavesTheOldFileAndNoTemporary)
{
    dir.Write("file", "old");
    ::chmod(dir("file").c_str(), 0444);
    EXPECT_EQ(ReplaceFileAt(dir("file"), "new", 0600), WriteResult::Failed) << "read-only";
    ::chmod(dir("file").c_str(), 0644);
    for (const std::string& bad : {dir(), dir("none/file"), std::string()})
        EXPECT_EQ(ReplaceFileAt(bad, "new", 0600), WriteResult::Failed) << bad;

    const std::string piece(1 << 20, 'x');
    int pieces = 0;
    const auto breaksOff = [&]() -> std::string_view {
        if (++pieces > 20)
            throw std::bad_alloc();
        return piece;
    };
    EXPECT_THROW(static_cast<void>(ReplaceFileAt(dir("file"), breaksOff, 0600)), std::bad_alloc);
    EXPECT_EQ(dir.Read("file"), "old");
    EXPECT_EQ(FileCount(), 1);
}

TEST_F(ReplaceFileTest, AFullOrReadOnlyDiskLeavesTheOldFile)
{
    constexpr int NoMounts = 100;
    const auto fails = [&](std::size_t size) {
        return ReplaceFileAt(dir("file"), std::string(size, 'x'), 0600) == WriteResult::Failed
               && dir.Read("file") == "old" && FileCount() == 1;
    };
    test::ChildProcess disk([&] {
        if (::unshare(CLONE_NEWNS) != 0
            || ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0
            || ::mount("tiny", dir().c_str(), "tmpfs", 0, "size=64k") != 0)
            return NoMounts;
        dir.Write("file", "old");
        if (!fails(100'000))
            return 1;
        ::mount(nullptr, dir().c_str(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr);
        return fails(4) ? 0 : 2;
    });
    const int outcome = disk.Wait();
    if (outcome == NoMounts)
        GTEST_SKIP() << "no right to mount";
    EXPECT_EQ(outcome, 0);
}

TEST_F(ReplaceFileTest, PipesAreWrittenStraight)
{
    ::mkfifo(dir("pipe").c_str(), 0600);
    EXPECT_EQ(ReplaceFileAt(dir("pipe"), "x", 0600), WriteResult::Failed) << "nobody reads";
    const auto read = [this] { return ::open(dir("pipe").c_str(), O_RDONLY | O_NONBLOCK); };
    int reader = read();
    EXPECT_EQ(ReplaceFileAt(dir("pipe"), "bytes", 0600), WriteResult::Written);
    char buffer[16] = {};
    EXPECT_EQ(std::string_view(buffer, ::read(reader, buffer, sizeof(buffer))), "bytes");

    // A reader that leaves in the middle must not end the program by SIGPIPE. It is a new one,
    // for which no writer has gone yet.
    ::close(reader);
    reader = read();
    test::ChildProcess writer([&] {
        ::signal(SIGPIPE, SIG_DFL); // whatever started this test has set
        ::close(reader);
        const auto result = ReplaceFileAt(dir("pipe"), std::string(1 << 20, 'x'), 0600);
        return result == WriteResult::Failed ? 7 : 1;
    });
    pollfd started{reader, POLLIN, 0};
    EXPECT_EQ(::poll(&started, 1, 60000), 1);
    ::close(reader);
    EXPECT_EQ(writer.Wait(), 7);
}

TEST_F(ReplaceFileTest, AKillAtAnyMomentLeavesOldOrNew)
{
    const std::string contents[] = {std::string(300000, 'a'), std::string(200000, 'b')};
    dir.Write("file", contents[0]);
    std::mt19937 random(7);
    int replaced = 0;
    for (int round = 0; round < 100; ++round) {
        const test::Signal started;
        test::ChildProcess writer([&] {
            for (int i = 1;; ++i)
                if (ReplaceFileAt(dir("file"), contents[i % 2], 0600) != WriteResult::Written
                    || (i == 1 && !started.Give()))
                    return 1;
        });
        ASSERT_TRUE(started.Take());
        // Some turns of work of our own, so that the kill comes at another place each time.
        std::string seen;
        for (auto turns = random() % 8; turns > 0; --turns)
            seen = dir.Read("file");
        writer.Kill();
        seen = dir.Read("file");
        ASSERT_TRUE(seen == contents[0] || seen == contents[1]) << round << ": " << seen.size();
        replaced += seen == contents[1] ? 1 : 0;
    }
    EXPECT_GT(replaced, 0) << "no kill came after a rename: the test shows nothing";
}

} // namespace
} // namespace velmo
