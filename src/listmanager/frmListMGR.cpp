#include "frmListMGR.h"

#include "ListRename.h"

#include "core/CallIfSet.h"
#include "core/Ignoring.h"
#include "core/PathRules.h"
#include "core/SettingsKeys.h"
#include "core/TextRules.h"
#include "playlist/ListDialogs.h"
#include "playlist/ListFile.h"
#include "playlist/RowSorting.h"

#include <algorithm>
#include <utility>

namespace velmo {

namespace {

using controls::MouseButton;
using controls::MouseEvent;

constexpr std::string_view TitleLineStart = "#ZVL20#";
constexpr std::int32_t VisibleLists = 7;

/// Kept: it is sought in the whole path, so that the internal list of a program below some folder
/// of that name counts as stored.
bool LooksStored(const std::string& path)
{
    const char separator = SeparatorOf(path);
    return FoldCase(path).find(separator + std::string("lists") + separator) != std::string::npos;
}

} // namespace

frmListMGR::frmListMGR(ManagerForms forms, ManagerModules modules)
    : m_form(forms.manager)
    , m_playlist(forms.playlist)
    , m_resources(forms.resources)
    , m_modules(modules)
    , m_caption({&forms.manager.imgClose})
{
    BindList();
    BindWindow();
    BindMenu();
}

void frmListMGR::Load()
{
    if (std::exchange(m_form.Loaded, true))
        return;
    CallIfSet(Calls.ShapeAndStick);
    m_form.AlwaysOnTop =
        IsTrue(m_modules.settings.ReadSetting(sections::Options, keys::AlwaysOnTop, "false"));
    EditMark.clear();
    LoadLists();
}

void frmListMGR::LoadLists()
{
    m_form.lstLists.Clear();
    const std::string& internal = m_modules.list.InternalListPath();
    if (FileExists(internal, m_modules.files))
        AddRow(ReadTitle(internal), internal);
    for (const std::string& path : m_modules.store.Lists())
        AddRow(ReadTitle(path), path);
    SortRows(m_form.lstLists, m_modules.collation, SortDirection::Ascending);
    UpdateScBarMGR();
}

std::string frmListMGR::ReadTitle(const std::string& path)
{
    const std::string line = FirstLineOfFile(path, m_modules.files);
    if (line.starts_with(TitleLineStart))
        return line.substr(TitleLineStart.size());
    std::string rewritten = path; // the row keeps its own
    return m_modules.tags.FileNameTitle(rewritten);
}

void frmListMGR::ReloadList(std::size_t row)
{
    m_form.lstLists.SetText(row, ReadTitle(m_form.lstLists.Row(row).Path));
}

void frmListMGR::UpdateScBarMGR()
{
    m_form.scBarMgr.Min = 0;
    m_form.scBarMgr.Max = static_cast<std::int32_t>(m_form.lstLists.Count()) - VisibleLists;
    m_form.scBarMgr.SetPosition(0);
}

void frmListMGR::submnuOpenPlaylist_Click()
{
    if (!HasSelection())
        return;
    const std::string path = SelectedPath();
    // A pass that ended in between would save the empty list.
    m_playlist.tmrInfo.Enabled = false;
    m_playlist.pl.Clear();
    // Lost on failure: the list that could not be read, or its rest.
    Ignoring([&] { m_modules.adding.AddPath(path); });
}

void frmListMGR::submnuNewPlaylist_Click()
{
    if (!HasSelection())
        return;
    const ListStore::FreeName free = m_modules.store.FindFreeName();
    [[maybe_unused]] const auto result = m_modules.store.Copy(SelectedPath(), free.path);
    AddRow(ReadTitle(free.path) + " (clone)", free.path);
    UpdateScBarMGR();
}

void frmListMGR::submnuAddPlaylist_Click()
{
    const ports::FileDialogAnswer answer = m_modules.dialogs.ChooseFiles({
        .kind = ports::FileDialogKind::Open,
        .owner = m_form.Name,
        .title = "Add playlist",
        .filter = OpenListFilter,
        .folder = m_modules.store.Directory(),
        .fileName = {},
    });
    if (answer.paths.empty())
        return;
    const std::string& path = answer.paths.front();
    [[maybe_unused]] const auto result =
        m_modules.store.Copy(path, m_modules.store.Directory() + SplitPath(path).name);
    LoadLists();
}

void frmListMGR::submnuRemovePlaylist_Click()
{
    if (!HasSelection() || SelectedPath() == m_modules.list.InternalListPath())
        return;
    m_modules.files.RemoveFile(SelectedPath());
    m_form.lstLists.Remove(m_form.lstLists.SelectedEntry());
    UpdateScBarMGR();
}

void frmListMGR::lstLists_AfterLabelEdit(std::size_t row, const std::string& newTitle)
{
    const controls::PlaylistEntry entry = m_form.lstLists.Row(row);
    EditMark.clear();
    if (RenameList(m_modules.files, entry.Path, newTitle.empty() ? entry.Text : newTitle)
        != ports::WriteResult::Written)
        EditMark = "The list can't be written.";
    ReloadList(row);
    EditMark = "edited";
}

void frmListMGR::lstLists_Drop(const std::vector<std::string>& paths)
{
    constexpr std::size_t ExtensionLength = 4;
    for (const std::string& path : paths) {
        if (!EqualsIgnoringAsciiCase(LastCharacters(path, ExtensionLength), ".zvl"))
            continue;
        const ListStore::FreeName free = m_modules.store.FindFreeName();
        [[maybe_unused]] const auto result = m_modules.store.Copy(path, free.path);
    }
    LoadLists();
}

void frmListMGR::lstLists_KeyDown(int keyCode)
{
    // The Enter that ends a label edit arrives here, too.
    if (std::exchange(EditMark, {}) == "edited")
        return;
    switch (keyCode) {
    case 46: submnuRemovePlaylist_Click(); break;
    case 13: submnuOpenPlaylist_Click(); break;
    case 116: LoadLists(); break;
    case 38:
    case 40:
    case 33:
    case 34: FollowRows(); break;
    default: break;
    }
}

void frmListMGR::lstLists_MouseWheel(int delta)
{
    constexpr std::size_t Step = 3;
    controls::ListRows& rows = m_form.lstLists;
    const std::size_t first = rows.FirstVisibleEntry();
    if (rows.Count() == 0)
        return;
    if (delta > 0)
        rows.EnsureVisible(first > Step ? first - Step : 1);
    else
        rows.EnsureVisible(std::min(first + rows.VisibleRows() - 1 + Step, rows.Count()));
    FollowRows();
}

void frmListMGR::scBarMgr_Change(bool goesDown, std::int32_t position)
{
    // Lost on failure: a row that the bar's end names and the list does not have.
    Ignoring([&] {
        m_form.lstLists.EnsureVisible(
            static_cast<std::size_t>(std::max(goesDown ? position + VisibleLists : position, 0)));
    });
}

/// The scroll bar shows which row is the first.
void frmListMGR::FollowRows()
{
    if (m_form.lstLists.Count() > 0)
        m_form.scBarMgr.SetPosition(static_cast<std::int32_t>(m_form.lstLists.FirstVisibleEntry())
                                    - 1);
}

void frmListMGR::PrepareMenu()
{
    controls::MenuEntry& heading = m_resources.subName;
    heading.Caption = "Sdsdsd"; // what an empty list shows
    if (HasSelection()) {
        const std::string path = SelectedPath();
        const std::string name = SplitPath(path).name;
        m_resources.submnuRemovePlaylist.Enabled = LooksStored(path);
        heading.Caption = LooksStored(path) ? name : "..\\" + name + " (internal)";
    }
    heading.Enabled = false;
}

void frmListMGR::BindList()
{
    controls::ListRows& rows = m_form.lstLists;
    rows.DblClick = [this] { submnuOpenPlaylist_Click(); };
    rows.KeyDown = [this](int keyCode) { lstLists_KeyDown(keyCode); };
    rows.MouseWheel = [this](int delta) { lstLists_MouseWheel(delta); };
    rows.AfterLabelEdit = [this](std::size_t row, const std::string& newTitle) {
        lstLists_AfterLabelEdit(row, newTitle);
    };
    rows.OLEDragDrop = [this](const std::vector<std::string>& paths) { lstLists_Drop(paths); };
    rows.MouseUp = [this](const MouseEvent& event) {
        if (event.button != MouseButton::Right)
            return;
        PrepareMenu();
        CallIfSet(m_resources.Menu6.PopUpAtPointer);
    };
    rows.MouseMove = [this](const MouseEvent& /*event*/) { m_caption.ShowNormal(); };
    m_form.scBarMgr.Change = [this](bool goesDown, std::int32_t position) {
        scBarMgr_Change(goesDown, position);
    };
}

void frmListMGR::BindWindow()
{
    m_caption.Bind(m_form.imgClose,
                   {.pressedBy = controls::PressedBy::AnyButton,
                    .act = [this](const MouseEvent& /*event*/) { CallIfSet(Calls.Hide); }});
    m_form.MouseMove = [this](const MouseEvent& /*event*/) { m_caption.ShowNormal(); };
    m_form.MouseDown = [this](const MouseEvent& event) {
        if (event.button == MouseButton::Left)
            CallIfSet(m_form.BeginDrag);
    };
    m_form.KeyPress = [this](char32_t key) {
        constexpr char32_t Enter = U'\r'; // opens the selected list when it goes down
        if (key != Enter)
            CallIfSet(Calls.KeyPress, key);
    };
    m_form.QueryClose = [this] { CallIfSet(Calls.Hide); };
}

void frmListMGR::BindMenu()
{
    m_resources.submnuOpenPlaylist.Click = [this] { submnuOpenPlaylist_Click(); };
    m_resources.submnuNewPlaylist.Click = [this] { submnuNewPlaylist_Click(); };
    m_resources.submnuAddPlaylist.Click = [this] { submnuAddPlaylist_Click(); };
    m_resources.submnuRemovePlaylist.Click = [this] { submnuRemovePlaylist_Click(); };
    m_resources.submnuRenamePlaylist.Click = [this] { CallIfSet(m_form.lstLists.StartLabelEdit); };
    m_resources.submnuRefresh.Click = [this] { LoadLists(); };
}

bool frmListMGR::HasSelection() const
{
    return m_form.lstLists.SelectedEntry() > 0;
}

std::string frmListMGR::SelectedPath() const
{
    return m_form.lstLists.Row(m_form.lstLists.SelectedEntry()).Path;
}

void frmListMGR::AddRow(const std::string& title, const std::string& path)
{
    m_form.lstLists.AddTexts({.Text = title, .Length = {}, .Path = path});
}

} // namespace velmo
