#pragma once

#include "core/modINI.h"
#include "forms/Playlist.h"
#include "ports/Files.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace velmo {

/// The playlist as a model: what everybody does with the rows of `pl`, and the internal list that
/// keeps them between two runs. Rows count from 1. User-interface thread only.
class modPlaylist final
{
public:
    /// Rows that the scroll bar takes to be in view; the view shows one more.
    static constexpr std::int32_t ScrolledRows = 31;

    /// The internal list lies in `applicationDirectory`.
    modPlaylist(forms::Playlist& playlist,
                modINI& settings,
                ports::Files& files,
                const std::string& applicationDirectory);

    /// Takes the number prefix from the texts of those rows; rows that don't exist are passed over.
    void StripAllNumbers(std::size_t first, std::size_t last);
    /// Puts each row's number before its text, without looking for an old one.
    void NumberAllEntries(std::size_t first, std::size_t last);
    /// Whether "ShowNumbersInPL" is on.
    bool ShowsNumbers();

    /// Clears every mark; the focus stays.
    void DeselectAllEntries();
    /// Removes the marked rows, renumbers and saves. No row is marked afterwards.
    void DeleteSelectedEntries();

    /// Writes the whole list over "list.zvl". On failure the old file and the rows stay, one line
    /// goes to stderr, and callers go on with their next step. A run that has not read the old file
    /// keeps it as "list.zvl~" before it is first replaced.
    ports::WriteResult SaveInternalList();
    /// Adds what "list.zvl" holds to the rows. A missing or foreign file adds nothing; what follows
    /// a line that is missing is lost without a word.
    void LoadInternalList();
    /// The path of "list.zvl".
    const std::string& InternalListPath() const;

    /// Sets the ends of `scBar` from the count, and its position from the row with the focus.
    void UpdateListScrollBar();

    /// Whether one of the 33 rows from `row` on has no length yet. False for row 0.
    bool VisibleNeedsReading(std::size_t row) const;
    /// The waking step of everything that moves the view or the focus: in mode "display", if a row
    /// in view is unread, the title reader starts at the top row of the view.
    void WakeTitleReader();
    /// Starts the title reader behind row `cursor` without a look at the rows.
    void StartTitleReader(std::size_t cursor);
    /// Whether "ReadTitlesOn" is "display".
    bool ReadsTitlesOnDisplay();

    /// The last row that the title reader has done.
    std::int32_t TitleReadCursor = 0;

private:
    /// The list's file as it was read.
    struct LoadedList
    {
        ports::FileStamp stamp;
        std::size_t hash = 0; ///< of its bytes
    };

    bool KeepUnreadList();
    bool IsAsLoaded();

    forms::Playlist& m_playlist;
    modINI& m_settings;
    ports::Files& m_files;
    std::string m_internalListPath;
    std::optional<LoadedList> m_loaded; ///< until the list is saved
    bool m_mayReplace = false;          ///< the file has been read in this run, or was kept
};

} // namespace velmo
