#pragma once

#include "NoDialogs.h"

#include "forms/Playlist.h"
#include "linux/LinuxFiles.h"
#include "linux/LocaleCollation.h"
#include "linux/ProfileFile.h"
#include "linux/SeededRandom.h"
#include "linux/SystemClock.h"
#include "playlist/Ordering.h"
#include "playlist/modPlaylist.h"

#include <cstdlib>
#include <filesystem>
#include <string>

namespace velmo::bench {

/// A directory of its own, gone at the end.
class OwnDirectory final
{
public:
    OwnDirectory()
    {
        std::string pattern = std::filesystem::temp_directory_path() / "velmo-bench-XXXXXX";
        m_path = ::mkdtemp(pattern.data()) == nullptr ? std::string() : pattern;
    }
    ~OwnDirectory()
    {
        std::error_code failed;
        std::filesystem::remove_all(m_path, failed);
    }
    OwnDirectory(const OwnDirectory&) = delete;
    OwnDirectory& operator=(const OwnDirectory&) = delete;

    std::string operator()(const std::string& name) const { return m_path + "/" + name; }

private:
    std::string m_path;
};

/// The playlist over real files, as the program puts it together.
struct ListOnDisk
{
    OwnDirectory directory;
    LinuxFiles files;
    ProfileFile settingsFile{files};
    NoDialogs dialogs;
    modINI settings{settingsFile, dialogs, directory("")};
    forms::Playlist playlist;
    modPlaylist list{playlist, settings, files, directory("")};
    LocaleCollation collation;
    SeededRandom random;
    SystemClock clock;
    Ordering ordering{
        list, playlist, {collation, random, clock}
    };
};

} // namespace velmo::bench
