#pragma once

#include "EntryMaker.h"
#include "MediaFilter.h"
#include "Ordering.h"
#include "modPlaylist.h"

#include "core/modINI.h"
#include "forms/Playlist.h"
#include "ports/Files.h"

#include <string>
#include <vector>

namespace velmo {

/// The modules that adding works with.
struct AddingModules
{
    modPlaylist& list;
    EntryMaker& entries;
    MediaFilter& filter;
    Ordering& ordering;
};

/// The doors by which paths from outside reach the list. User-interface thread only.
class Adding
{
public:
    Adding(AddingModules modules, forms::Playlist& playlist, modINI& settings, ports::Files& files);

    /// Adds what the path names behind the last row: the entries of a list file (by its last three
    /// characters), the known files of a folder, or a file of a known extension. Then row 1 is
    /// marked and the list saved. An empty path loads the internal list instead. A list with a
    /// foreign header ends it silently, without mark and save. Raises a `RunError` if there is no
    /// such path, or if a list can't be read or ends within an entry. Never sorts.
    void AddPath(const std::string& path);

    /// The path that another process hands over. Joins the end of the list, or replaces the list if
    /// the settings say so. An empty path does nothing. Raises what `AddPath` raises.
    void EnqueueFromCommandLine(const std::string& path);

    /// Files and folders that were dropped on `pl`, in their order. One that can't be added is
    /// passed over with a line on stderr.
    void pl_Drop(const std::vector<std::string>& paths);

private:
    bool AddNamed(const std::string& path);
    void AddFolder(const std::string& path);
    void AddFile(const std::string& path);
    void LoadAtStart();

    AddingModules m_modules;
    forms::Playlist& m_playlist;
    modINI& m_settings;
    ports::Files& m_files;
};

} // namespace velmo
