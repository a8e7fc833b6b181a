#pragma once

#include "modTags.h"

#include "core/modINI.h"
#include "forms/Playlist.h"
#include "ports/Files.h"

#include <string>
#include <vector>

namespace velmo {

/// The doors by which paths from outside reach the list.
class Adding
{
public:
    Adding(forms::Playlist& playlist, modTags& tags, modINI& settings, ports::Files& files);

    /// Adds a file, or the known files of a folder, behind the last row, and marks row 1. What is
    /// added wakes the title reader in mode "display". An empty path adds nothing. Raises a
    /// `RunError` if there is no such path.
    void AddPath(const std::string& path);

    /// The path that another process hands over. Joins the end of the list, or replaces the list if
    /// the settings say so.
    void EnqueueFromCommandLine(const std::string& path);

private:
    void AddFolder(const std::string& path);
    void AddFile(std::string path);
    std::string EntryTitle(std::string& path);

    forms::Playlist& m_playlist;
    modTags& m_tags;
    modINI& m_settings;
    ports::Files& m_files;
};

/// Whether the text behind the last "." of `name` (all of it if there is none) is one of
/// `extensions`, ignoring case. An empty list passes everything.
bool HasKnownExtension(const std::string& name, const std::vector<std::string>& extensions);

} // namespace velmo
