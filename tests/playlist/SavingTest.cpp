#include "linux/LinuxFiles.h"
#include "playlist/modPlaylist.h"
#include "support/ChildProcess.h"
#include "support/FakeDialogs.h"
#include "support/FakeSettings.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>
#include <sched.h>

#include <filesystem>

#include <sys/mount.h>

namespace velmo {
namespace {

/// Real files under a list of a few or of many rows.
struct RealList
{
    explicit RealList(const std::string& directory)
        : list(playlist, settings, files, directory)
    {}

    bool Save(std::size_t rows)
    {
        playlist.pl.Clear();
        for (std::size_t row = 1; row <= rows; ++row)
            playlist.pl.Add({"a title of some length", "01:00", "/music/" + std::to_string(row)});
        return list.SaveInternalList() == ports::WriteResult::Written;
    }

    forms::Playlist playlist;
    test::FakeSettings settingsFile;
    test::FakeDialogs dialogs;
    modINI settings{settingsFile, dialogs, "/app/"};
    LinuxFiles files;
    modPlaylist list;
};

enum Outcome
{
    AllHeld = 0,
    NothingSaved,
    FullDiskSaved,
    FullDiskLost,
    LeftBehind,
    ReadOnlySaved,
    ReadOnlyLost,
    NoMounts,
};

bool MountTiny(const std::string& directory)
{
    return ::unshare(CLONE_NEWNS) == 0
           && ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0
           && ::mount("tiny", directory.c_str(), "tmpfs", 0, "size=64k") == 0;
}

Outcome SaveOnTinyDisk(const test::TempDir& directory)
{
    constexpr std::size_t Many = 10'000;
    if (!MountTiny(directory()))
        return NoMounts;
    RealList list(directory());
    if (!list.Save(3))
        return NothingSaved;
    const std::string before = directory.Read("list.zvl");
    if (list.Save(Many))
        return FullDiskSaved;
    if (directory.Read("list.zvl") != before || list.playlist.pl.Count() != Many)
        return FullDiskLost;
    const std::filesystem::directory_iterator files(directory());
    if (std::distance(begin(files), end(files)) != 1)
        return LeftBehind;
    ::mount(nullptr, directory().c_str(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr);
    if (list.Save(4))
        return ReadOnlySaved;
    return directory.Read("list.zvl") == before ? AllHeld : ReadOnlyLost;
}

TEST(SaveInternalList, AFullOrReadOnlyDiskLeavesTheOldFile)
{
    const test::TempDir directory;
    const int outcome = test::ChildProcess([&] { return SaveOnTinyDisk(directory); }).Wait();
    if (outcome == NoMounts)
        GTEST_SKIP() << "no right to mount";
    EXPECT_EQ(outcome, AllHeld);
}

} // namespace
} // namespace velmo
