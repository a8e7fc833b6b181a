#include "linux/ProfileFile.h"

#include "linux/LinuxFiles.h"
#include "support/ChildProcess.h"
#include "support/FakeFiles.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <list>
#include <string>

#include <sys/stat.h>

namespace velmo {
namespace {

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
    struct stat status = {};
    ::stat(path.c_str(), &status);
    EXPECT_EQ(status.st_mode & 07777, 0600U);
    profile.ProfileWrite("s", "k", "", path);
    EXPECT_EQ(Read("k"), "none");
}

TEST_F(ProfileFileTest, AnUnchangedValueWritesNothing)
{
    dir.Write("zuvio.ini", "[s]\nk=1\n");
    const auto before = files.Stamp(path);
    profile.ProfileWrite("S", "K", "1", path);
    EXPECT_EQ(files.Stamp(path), before);
}

TEST_F(ProfileFileTest, AFailedWriteIsSilentAndLosesNothing)
{
    dir.Write("zuvio.ini", "[s]\nk=1\n");
    ::chmod(path.c_str(), 0444);
    profile.ProfileWrite("s", "k", "2", path);
    EXPECT_EQ(Read("k"), "1");
    profile.ProfileWrite("s", "k", "2", dir("none/zuvio.ini"));
    std::filesystem::create_directory(dir("folder.ini"));
    profile.ProfileWrite("s", "k", "2", dir("folder.ini"));
    EXPECT_TRUE(std::filesystem::is_directory(dir("folder.ini")));
}

TEST_F(ProfileFileTest, EveryEditByOthersIsSeenAtOnce)
{
    // Same size, same inode, and often the same time by the clock that stamps files.
    std::ofstream(path) << "[s]\nk=0000\n";
    for (int i = 1000; i < 3000; ++i) {
        std::fstream file(path, std::ios::in | std::ios::out);
        file.seekp(6);
        file << i;
        file.close();
        ASSERT_EQ(Read("k"), std::to_string(i));
    }
    dir.Write("new.ini", "[s]\nk=abcd\n");
    std::filesystem::rename(dir("new.ini"), path);
    EXPECT_EQ(Read("k"), "abcd");
    std::filesystem::remove(path);
    EXPECT_EQ(Read("k"), "none");
}

TEST_F(ProfileFileTest, AFileThatSettledLongAgoIsReadOnce)
{
    test::FakeFiles old; // its stamps stay at the beginning of time
    old.files[path] = "[s]\nk=1\n";
    ProfileFile kept(old);
    EXPECT_EQ(kept.ProfileRead("s", "k", "none", path), "1");
    old.files[path] = "[s]\nk=2\n";
    EXPECT_EQ(kept.ProfileRead("S", "K", "none", path), "1")
        << "the stamp says nothing of a change";
    old.files.clear();
    EXPECT_EQ(kept.ProfileRead("s", "k", "none", path), "none");
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
    for (int i = 0; i < Keys; ++i) {
        EXPECT_EQ(Read("a" + std::to_string(i)), "1");
        EXPECT_EQ(Read("b" + std::to_string(i)), "1");
    }
}

} // namespace
} // namespace velmo
