#pragma once

#include "forms/Playlist.h"
#include "forms/frmListMGR.h"
#include "playlist/Adding.h"
#include "playlist/ListStore.h"
#include "playlist/modPlaylist.h"
#include "playlist/modTags.h"
#include "ports/Collation.h"
#include "ports/Dialogs.h"
#include "ports/Files.h"

#include <string>
#include <vector>

namespace velmo {

/// The modules and ports that the manager works with.
struct ManagerModules
{
    modPlaylist& list;
    Adding& adding;
    ListStore& store;
    modTags& tags;
    ports::Collation& collation;
    ports::Files& files;
    ports::Dialogs& dialogs;
};

/// What the manager's context menu shows.
struct ManagerMenu
{
    std::string subName = "-(name)-"; ///< its heading
    bool subNameEnabled = true;
    bool submnuRemovePlaylistEnabled = true;
};

/// The store of lists as the rows of `lstLists`, and what is done with its lists. The selected row
/// is the one with the focus; without one an operation on it does nothing. What fails is passed
/// over without a word. User-interface thread only.
class frmListMGR final
{
public:
    frmListMGR(forms::frmListMGR& form, forms::Playlist& playlist, ManagerModules modules);

    /// Fills the rows from disk: the internal list and all stored ones, by title.
    void LoadLists();
    /// The title that the file's first line tells, else the file's name as a title.
    std::string ReadTitle(const std::string& path);
    /// Sets the row's text to the title of its file. Raises an index error if there is no such row.
    void ReloadList(std::size_t row);
    void UpdateScBarMGR();

    /// The playlist becomes the selected list. Kept: a list that has vanished leaves it empty.
    void submnuOpenPlaylist_Click();
    /// Copies the selected list under a free number. Kept: its row says "(clone)" until the next
    /// `LoadLists`.
    void submnuNewPlaylist_Click();
    /// Copies a chosen file into the store, in place of one of the same name.
    void submnuAddPlaylist_Click();
    /// Deletes the selected list, but not the internal one.
    void submnuRemovePlaylist_Click();
    void submnuRefresh_Click();
    /// The end of the label edit of `row`. An empty title means the old one.
    void lstLists_AfterLabelEdit(std::size_t row, const std::string& newTitle);

    /// Stores the lists of the own format among dropped files; others are passed over.
    void lstLists_Drop(const std::vector<std::string>& paths);
    /// Codes: Delete 46, Enter 13, F5 116, Up 38, Down 40, Page Up 33, Page Down 34.
    void lstLists_KeyDown(int keyCode);
    /// The user has moved the scroll bar.
    void scBarMgr_Change(bool goesDown, std::int32_t position);

    /// Sets `Menu6` for the selected row.
    void PrepareMenu();

    ManagerMenu Menu6;
    /// Empty; "edited" from a rename to the next key; the text of a failure while a rename runs.
    std::string EditMark;

private:
    bool HasSelection() const;
    std::string SelectedPath() const;
    void AddRow(const std::string& title, const std::string& path);

    forms::frmListMGR& m_form;
    forms::Playlist& m_playlist;
    ManagerModules m_modules;
};

} // namespace velmo
