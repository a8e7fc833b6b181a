#pragma once

#include "Adding.h"
#include "TrackStarter.h"

#include "core/modINI.h"
#include "forms/Playlist.h"
#include "ports/Dialogs.h"
#include "ports/Files.h"

namespace velmo {

/// The two dialogs by which media files join the list. User-interface thread; the dialogs serve
/// events while they are open.
class AddingDialogs final
{
public:
    /// `errors` shows what goes wrong.
    AddingDialogs(AddingModules modules,
                  forms::Playlist& playlist,
                  TrackStarter& errors,
                  modINI& settings,
                  ports::Files& files,
                  ports::Dialogs& dialogs);

    /// Adds chosen files, whatever their extension.
    void AddFilesDialog();

    /// Adds the files of known extensions of a chosen folder.
    void AddDirectoryDialog();

private:
    AddingModules m_modules;
    forms::Playlist& m_playlist;
    TrackStarter& m_errors;
    modINI& m_settings;
    ports::Files& m_files;
    ports::Dialogs& m_dialogs;
};

} // namespace velmo
