#pragma once

#include "bass/TagLibrary.h"
#include "bass/modBass.h"
#include "ports/Files.h"

#include <string>

namespace velmo {

/// Titles of files and open channels. User-interface thread only; each operation that takes a path
/// opens the file, reads and closes it again before it returns.
class modTags
{
public:
    /// `applicationDirectory` becomes the current directory whenever a title is read from tags.
    modTags(const modBass& bass,
            TagLibrary& tags,
            ports::Files& files,
            std::string applicationDirectory);

    /// "Artist - Title" of an open channel, or the one of the two that there is, or nothing. Of
    /// each field the longer of the format's own tag and ID3v1 counts, ID3v1 on equal length.
    /// Raises a `RunError` if the tag library is missing.
    std::string MakeTagTitle(DWORD channel);

    /// The file's name without its last four characters, whatever they are. Rewrites `path` to what
    /// the directory search found: the bare directory if there is no such file. A location stays as
    /// it is.
    std::string FileNameTitle(std::string& path);

    /// `FileNameTitle` of a path that a walk has just found, without looking for it again.
    std::string FoundFileTitle(std::string& path);

    /// `MakeTagTitle` of the file, else `FileNameTitle`, which rewrites `path`.
    std::string ReadFileTitle(std::string& path);

    /// Title and length in one opening. False, and both empty, if the file can't be opened.
    bool ReadFileTitleAndLength(const std::string& path, std::string& title, std::string& length);

    /// The file's length as `FormatSeconds` shows it; "59:-01" if it can't be opened.
    std::string ReadFileLength(const std::string& path);

private:
    DWORD OpenForReading(const std::string& path);
    void Close(DWORD channel) const;
    std::string LengthText(DWORD channel) const;
    std::string TitleOrClose(DWORD channel);

    const modBass& m_bass;
    TagLibrary& m_tags;
    ports::Files& m_files;
    std::string m_applicationDirectory;
};

} // namespace velmo
