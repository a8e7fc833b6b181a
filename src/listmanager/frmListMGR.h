#pragma once

#include "controls/PictureRow.h"
#include "core/modINI.h"
#include "forms/Playlist.h"
#include "forms/frmListMGR.h"
#include "forms/frmResources.h"
#include "playlist/Adding.h"
#include "playlist/ListStore.h"
#include "playlist/modPlaylist.h"
#include "playlist/modTags.h"
#include "ports/Collation.h"
#include "ports/Dialogs.h"
#include "ports/Files.h"

#include <functional>
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
    modINI& settings;
    ports::Collation& collation;
    ports::Files& files;
    ports::Dialogs& dialogs;
};

/// The windows of the manager: its own, the one whose list it replaces, the one its menu hangs in.
struct ManagerForms
{
    forms::frmListMGR& manager;
    forms::Playlist& playlist;
    forms::frmResources& resources;
};

/// What the manager's window needs of the layers above it. Bound by the object graph before the
/// first event; what is not bound does nothing.
struct ManagerCalls
{
    /// The window's load: its outline from its picture, and its place among the sticky windows.
    std::function<void()> ShapeAndStick;
    /// Hides the window, for this run and the next ones.
    std::function<void()> Hide;
    /// The letter commands of the player, of any character but Enter.
    std::function<void(char32_t)> KeyPress;
};

/// The store of lists as the rows of `lstLists`, and what is done with its lists. The selected row
/// is the one with the focus; without one an operation on it does nothing. What fails is passed
/// over without a word. User-interface thread only.
class frmListMGR final
{
public:
    /// Sets the slots of the window and of its menu's entries, which must not be used after the end
    /// of this.
    frmListMGR(ManagerForms forms, ManagerModules modules);
    frmListMGR(const frmListMGR&) = delete;
    frmListMGR& operator=(const frmListMGR&) = delete;
    ~frmListMGR() = default;

    /// Makes the window ready and fills it. Does nothing on a window that is loaded.
    void Load();

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
    /// The end of the label edit of `row`. An empty title means the old one.
    void lstLists_AfterLabelEdit(std::size_t row, const std::string& newTitle);

    /// Stores the lists of the own format among dropped files; others are passed over.
    void lstLists_Drop(const std::vector<std::string>& paths);
    /// Codes: Delete 46, Enter 13, F5 116, Up 38, Down 40, Page Up 33, Page Down 34.
    void lstLists_KeyDown(int keyCode);
    /// Three rows to a step; the scroll bar follows.
    void lstLists_MouseWheel(int delta);
    /// The user has moved the scroll bar.
    void scBarMgr_Change(bool goesDown, std::int32_t position);

    /// Sets the heading of `Menu6` and whether it can remove the selected list.
    void PrepareMenu();

    ManagerCalls Calls;
    /// Empty; "edited" from a rename to the next key; the text of a failure while a rename runs.
    std::string EditMark;

private:
    void FollowRows();
    void BindList();
    void BindWindow();
    void BindMenu();
    bool HasSelection() const;
    std::string SelectedPath() const;
    void AddRow(const std::string& title, const std::string& path);

    forms::frmListMGR& m_form;
    forms::Playlist& m_playlist;
    forms::frmResources& m_resources;
    ManagerModules m_modules;
    controls::PictureRow m_caption;
};

} // namespace velmo
