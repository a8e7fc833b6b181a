#pragma once

#include <string>
#include <vector>

namespace velmo::ports {

/// Message styles by the numbers the program uses for them.
enum class MessageStyle
{
    Critical = 16,     ///< stop sign, one button
    WarningYesNo = 52, ///< warning sign, yes and no
};

enum class MessageAnswer
{
    Ok,
    Yes,
    No,
};

enum class FileDialogKind
{
    Open,     ///< one file, which must exist
    OpenMany, ///< one or several, which must exist
    Save,     ///< a name; the dialog asks before an existing file is chosen
};

/// What a file dialog is to show.
struct FileDialog
{
    FileDialogKind kind = FileDialogKind::Open;
    std::string owner; ///< name of the window it belongs to; the active one if there is none
    std::string title;
    /// Labels and patterns in turn, parted by "|"; several patterns of a label by ";". Patterns
    /// ignore case. Empty: everything is shown.
    std::string filter;
    int filterIndex = 1; ///< the label that is chosen at first, from 1
    /// Where it opens. Of a folder that is not there the nearest existing parent is taken, else the
    /// user's music folder, else the home directory.
    std::string folder;
    std::string fileName; ///< proposed; may be empty
};

/// What was chosen.
struct FileDialogAnswer
{
    std::vector<std::string> paths; ///< absolute; none if the dialog was cancelled
    std::string label;              ///< that of the filter, as it was given

    bool operator==(const FileDialogAnswer&) const = default;
};

/// Modal questions and reports. User-interface thread; events are served while a box is open.
class Dialogs
{
public:
    virtual ~Dialogs() = default;

    /// Shows `text` ("\n" parts lines) under `title` and waits for the answer.
    virtual MessageAnswer MessageBox(const std::string& text,
                                     const std::string& title,
                                     MessageStyle style) = 0;

    /// Asks for files and waits for the answer.
    virtual FileDialogAnswer ChooseFiles(const FileDialog& dialog) = 0;

    /// Asks for a folder of the file system. Its path; empty if the dialog was cancelled.
    virtual std::string ChooseFolder(const std::string& title) = 0;

    /// Serves what waits in the event queue once, so that windows are drawn before long work.
    virtual void ServeEvents() = 0;
};

} // namespace velmo::ports
