#include "modPlaylist.h"

#include "EntryText.h"
#include "ListText.h"

#include "core/PathRules.h"
#include "core/SettingsKeys.h"
#include "core/TextRules.h"

#include <algorithm>
#include <cstdio>
#include <functional>
#include <utility>

namespace velmo {

namespace {

constexpr const char* InternalListName = "list.zvl";
constexpr const char* InternalTitleLine = "#ZVL20#Internal playlist";

} // namespace

modPlaylist::modPlaylist(forms::Playlist& playlist,
                         modINI& settings,
                         ports::Files& files,
                         const std::string& applicationDirectory)
    : m_playlist(playlist)
    , m_settings(settings)
    , m_files(files)
    , m_internalListPath(EnsureTrailingBackslash(applicationDirectory) + InternalListName)
{}

void modPlaylist::StripAllNumbers(std::size_t first, std::size_t last)
{
    controls::ListRows& rows = m_playlist.pl;
    for (std::size_t row = std::max<std::size_t>(first, 1); row <= std::min(last, rows.Count());
         ++row)
        rows.SetText(row, StripEntryNumber(rows.Texts(row).Text));
}

void modPlaylist::NumberAllEntries(std::size_t first, std::size_t last)
{
    controls::ListRows& rows = m_playlist.pl;
    std::string text;
    for (std::size_t row = std::max<std::size_t>(first, 1); row <= std::min(last, rows.Count());
         ++row) {
        text = std::to_string(row);
        text.append(". ").append(rows.Texts(row).Text);
        rows.SetText(row, text);
    }
}

bool modPlaylist::ShowsNumbers()
{
    return IsTrue(m_settings.ReadSetting(sections::Display, keys::ShowNumbersInPL, "True"));
}

void modPlaylist::DeselectAllEntries()
{
    m_playlist.pl.DeselectAll();
}

void modPlaylist::DeleteSelectedEntries()
{
    controls::ListRows& rows = m_playlist.pl;
    StripAllNumbers(1, rows.Count());
    rows.RemoveMarked();
    if (ShowsNumbers())
        NumberAllEntries(1, rows.Count());
    SaveInternalList();
    UpdateListScrollBar();
}

ports::WriteResult modPlaylist::SaveInternalList()
{
    using ports::WriteResult;
    ListText text(ListFormat::Own, m_playlist.pl, InternalTitleLine);
    const auto next = [&text] { return text.Next(); };
    const bool saved =
        KeepUnreadList()
        && (IsAsLoaded()
            || m_files.ReplaceFileInPieces(m_internalListPath, next) == WriteResult::Written);
    if (!saved)
        static_cast<void>(
            std::fprintf(stderr, "velmo: can't save %s\n", m_internalListPath.c_str()));
    return saved ? WriteResult::Written : WriteResult::Failed;
}

void modPlaylist::LoadInternalList()
{
    const EntryStyle style{
        // Kept: the key is looked for in the wrong section first.
        .numbers = IsTrue(m_settings.ReadSetting(
            sections::Options,
            keys::ShowNumbersInPL,
            m_settings.ReadSetting(sections::Display, keys::ShowNumbersInPL, "True"))),
        .lengths = IsTrue(m_settings.ReadSetting(sections::Options, keys::ShowLengthInPL, "True")),
    };
    // Looked at before the reading: what is written in between is seen as another state.
    const std::optional<ports::FileStamp> stamp = m_files.Stamp(m_internalListPath);
    const std::optional<std::string> content = m_files.Read(m_internalListPath);
    if (!content
        || ReadList(ListFormat::Own, *content, style, m_playlist.pl) == ListOutcome::ForeignHeader)
        return;
    m_mayReplace = true;
    if (stamp)
        m_loaded = {.stamp = *stamp, .hash = std::hash<std::string>()(*content)};
    UpdateListScrollBar();
}

/// Whether the file still holds the rows since it was loaded: every start saves the list right
/// after that, and a write that reaches the disk would hold up the window.
bool modPlaylist::IsAsLoaded()
{
    const std::optional<LoadedList> loaded = std::exchange(m_loaded, std::nullopt);
    if (!loaded || m_files.Stamp(m_internalListPath) != loaded->stamp)
        return false;
    const std::string content = WriteList(ListFormat::Own, m_playlist.pl, InternalTitleLine);
    return std::hash<std::string>()(content) == loaded->hash;
}

const std::string& modPlaylist::InternalListPath() const
{
    return m_internalListPath;
}

void modPlaylist::UpdateListScrollBar()
{
    const auto count = static_cast<std::int32_t>(m_playlist.pl.Count());
    const auto focus = static_cast<std::int32_t>(m_playlist.pl.SelectedEntry());
    m_playlist.scBar.Min = 1;
    m_playlist.scBar.Max = count - ScrolledRows;
    if (count > 0)
        m_playlist.scBar.SetPosition(std::min(focus, count - ScrolledRows));
}

bool modPlaylist::VisibleNeedsReading(std::size_t row) const
{
    const controls::ListRows& rows = m_playlist.pl;
    constexpr std::size_t RowsAhead = 32;
    if (row == 0)
        return false;
    for (std::size_t seen = row; seen <= std::min(row + RowsAhead, rows.Count()); ++seen)
        if (IsUnread(rows.Texts(seen).Length))
            return true;
    return false;
}

void modPlaylist::WakeTitleReader()
{
    const std::size_t top = m_playlist.pl.FirstVisibleEntry();
    if (ReadsTitlesOnDisplay() && VisibleNeedsReading(top))
        StartTitleReader(top - 1);
}

void modPlaylist::StartTitleReader(std::size_t cursor)
{
    TitleReadCursor = static_cast<std::int32_t>(cursor);
    m_playlist.tmrInfo.Enabled = true;
}

bool modPlaylist::ReadsTitlesOnDisplay()
{
    return EqualsIgnoringCase(
        m_settings.ReadSetting(sections::Options, keys::ReadTitlesOn, "display"), "display");
}

/// Before a list that nobody has looked at is replaced, it gets a second name. False if that fails:
/// then it must stay.
bool modPlaylist::KeepUnreadList()
{
    if (!m_mayReplace && m_files.Stamp(m_internalListPath))
        m_mayReplace = m_files.CopyFile(m_internalListPath, m_internalListPath + "~")
                       == ports::WriteResult::Written;
    else
        m_mayReplace = true;
    return m_mayReplace;
}

} // namespace velmo
