#include "TitleReader.h"

#include "EntryText.h"

#include "core/Ignoring.h"
#include "core/PathRules.h"

#include <utility>

namespace velmo {

TitleReader::TitleReader(modPlaylist& list,
                         forms::Playlist& playlist,
                         modTags& tags,
                         Ordering& ordering,
                         TrackStarter& starter,
                         modINI& settings,
                         ports::Files& files,
                         std::string startPath)
    : m_list(list)
    , m_playlist(playlist)
    , m_tags(tags)
    , m_ordering(ordering)
    , m_starter(starter)
    , m_settings(settings)
    , m_files(files)
    , m_startPath(std::move(startPath))
{}

void TitleReader::tmrInfo_Timer()
{
    constexpr std::size_t Window = 32;
    const auto row = static_cast<std::size_t>(++m_list.TitleReadCursor);
    PlayStartPath();
    const controls::ListRows& rows = m_playlist.pl;
    const std::size_t end = rows.FirstVisibleEntry() + Window;
    if (row < end && row <= rows.Count())
        ReadRow(row);
    // Behind the last row, as after a removal, there is nothing left to count up to.
    if (row < rows.Count() && row != end)
        return;
    m_playlist.tmrInfo.Enabled = false;
    m_ordering.SortIfWanted(m_settings);
    m_list.SaveInternalList();
}

/// Kept: a file that can't be opened is tried again by every tick of the pass.
void TitleReader::PlayStartPath()
{
    if (!m_startPath.empty() && !m_starter.HasChannel())
        Ignoring([&] { m_starter.PlayTrack(m_playlist.pl.Row(1).Path); });
}

void TitleReader::ReadRow(std::size_t row)
{
    controls::PlaylistEntry entry = m_playlist.pl.Row(row);
    if (!IsUnread(entry.Length))
        return;
    const EntryStyle style = ReadEntryStyle(m_settings);
    std::string path = entry.Path; // reading rewrites it; the entry keeps its own
    entry.Text.clear();
    // Kept: what does not exist as a file, a location too, loses its title here.
    Ignoring([&] {
        if (FileExists(path, m_files))
            entry.Text = m_tags.ReadFileTitle(path);
    });
    if (style.numbers)
        entry.Text.insert(0, std::to_string(row) + ". ");
    entry.Length = style.lengths ? m_tags.ReadFileLength(path) : std::string();
    m_playlist.pl.SetRow(row, entry);
}

} // namespace velmo
