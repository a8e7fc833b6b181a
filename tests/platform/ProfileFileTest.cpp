#include "linux/ProfileFile.h"

#include "linux/LinuxFiles.h"
#include "support/ChildProcess.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <list>
#include <string>

namespace velmo {
namespace {

namespace fs = std::filesystem;

class ProfileFileTest : public testing::Test
{
protected:
    std::string Read(const std::string& key) { return profile.ProfileRead("s", key, "none", path); }

    test::TempDir dir;
    const std::string path = dir("zuvio.ini");
    LinuxFiles files;
    ProfileFile profile{files};
};

TEST_F(ProfileFileTest, AFileIsMadeAtTheFirstWriteForItsOwnerOnly)
{
    EXPECT_EQ(Read("k"), "none");
    profile.ProfileWrite("s", "k", "1", path);
    EXPECT_EQ(dir.Read("zuvio.ini"), "[s]\r\nk=1\r\n");
    EXPECT_EQ(Read("K"), "1");
    EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    const auto before = files.Stamp(path);
    profile.ProfileWrite("S", "K", "1", path);
    EXPECT_EQ(files.Stamp(path), before) << "an unchanged value writes nothing";
    profile.ProfileWrite("s", "k", "2", dir("none/zuvio.ini")); // is lost without a word
    profile.ProfileWrite("s", "k", "", path);
    EXPECT_EQ(Read("k"), "none");
}

TEST_F(ProfileFileTest, EveryEditByOthersIsSeenAtOnce)
{
    // Same size, same inode, and often the same time by the clock that stamps files.
    for (int i = 1000; i < 3000; ++i) {
        dir.Write("zuvio.ini", "[s]\nk=" + std::to_string(i) + "\n");
        ASSERT_EQ(Read("k"), std::to_string(i));
    }
    dir.Write("new.ini", "[s]\nk=abcd\n");
    fs::rename(dir("new.ini"), path);
    EXPECT_EQ(Read("k"), "abcd");
    fs::remove(path);
    EXPECT_EQ(Read("k"), "none");
}

TEST_F(ProfileFileTest, TwoProcessesLoseNoneOfTheirKeys)
{
    constexpr int Keys = 60;
    std::list<test::ChildProcess> writers;
    for (const std::string name : {"a", "b"})
        writers.emplace_back([&, name] {
            ProfileFile own(files);
            for (int i = 0; i < Keys; ++i)
                own.ProfileWrite("s", name + std::to_string(i), "1", path);
            return 0;
        });
    for (test::ChildProcess& writer : writers)
        EXPECT_EQ(writer.Wait(), 0);
    for (int i = 0; i < Keys; ++i)
        EXPECT_EQ(Read("a" + std::to_string(i)) + Read("b" + std::to_string(i)), "11");
}

} // namespace
} // namespace velmo
