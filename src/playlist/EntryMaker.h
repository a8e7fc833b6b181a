#pragma once

#include "EntryText.h"
#include "modTags.h"

#include "core/modINI.h"
#include "forms/Playlist.h"

#include <string>

namespace velmo {

/// What the settings want of entries that are added; read once an operation.
struct AddingOptions
{
    bool readsOnLoad = false; ///< files are opened for title and length while they are added
    bool convertsPercent20 = false;
    bool convertsUnderscores = false;
    EntryStyle style;
};

AddingOptions ReadAddingOptions(modINI& settings);

/// Makes rows of media files. User-interface thread only.
class EntryMaker final
{
public:
    EntryMaker(forms::Playlist& playlist, modTags& tags);

    /// Adds a row for a file that was named: its title from tags or file name, and its length, as
    /// `options` has it. The row's path is rewritten where the title comes from the file's name.
    /// Kept: the title is converted when it has its number.
    /// Raises a `RunError` if tags are to be read and the tag library is missing.
    void AddNamed(std::string path, const AddingOptions& options);

    /// The same for a file that a walk has just found.
    /// Kept: the title is converted before it gets its number.
    void AddFound(std::string path, const AddingOptions& options);

    /// Rewrites the path of a file that a walk has just found, as a title from its name does.
    void NormaliseFound(std::string& path);

private:
    void AddRow(const std::string& title, const std::string& length, const std::string& path);

private:
    forms::Playlist& m_playlist;
    modTags& m_tags;
};

} // namespace velmo
