#pragma once

#include "ListStore.h"
#include "Ordering.h"
#include "modPlaylist.h"

#include "core/modINI.h"
#include "forms/Playlist.h"
#include "forms/frmListMGR.h"
#include "ports/Dialogs.h"
#include "ports/Files.h"

#include <string>

namespace velmo {

/// The filter of the dialogs that open a list.
extern const char* const OpenListFilter;

/// The forms that the dialogs work on.
struct ListForms
{
    forms::Playlist& playlist;
    forms::frmListMGR& manager;
};

/// The two dialogs by which list files come and go. User-interface thread; the dialogs serve events
/// while they are open.
class ListDialogs final
{
public:
    ListDialogs(modPlaylist& list,
                ListForms forms,
                Ordering& ordering,
                ListStore& store,
                modINI& settings,
                ports::Files& files,
                ports::Dialogs& dialogs);

    /// Adds the entries of a chosen list to the rows, saves, and keeps a copy of the whole list in
    /// the store. Raises a `RunError` if the list can't be read or ends within an entry; a foreign
    /// header ends it silently.
    void OpenListDialog();

    /// Writes the rows to a chosen file, in the format of the chosen filter. A file that can't be
    /// written simply isn't.
    void SaveListDialog();

private:
    std::string TitleLineOf(const std::string& path);
    void KeepCopy();

    modPlaylist& m_list;
    ListForms m_forms;
    Ordering& m_ordering;
    ListStore& m_store;
    modINI& m_settings;
    ports::Files& m_files;
    ports::Dialogs& m_dialogs;
};

} // namespace velmo
