#pragma once

#include "core/modINI.h"
#include "forms/Playlist.h"
#include "playlist/modPlaylist.h"

#include <cstdint>

namespace velmo {

/// The view of `pl` and `scBar`, as wheel, bar, mouse and keys move them. Each of them wakes the
/// title reader. Kept: 31 rows are taken to be in view, while there are 32, and the bar stands for
/// the row at the top from before a key has its effect. User-interface thread only.
class PlaylistScrolling final
{
public:
    PlaylistScrolling(forms::Playlist& form, modPlaylist& list);

    /// Reads "mwStep", the rows that one step of the wheel moves: 1 to 200.
    void ReadStep(modINI& settings);

    /// Down the list if `delta` is below 1, else up. A list that is in view as a whole stays.
    void MouseWheel(int delta);
    /// The user has moved the bar.
    void scBar_Change(bool goesDown, std::int32_t position);
    void pl_Click();
    /// The part of a key that moves the view, by its virtual code.
    void pl_KeyDown(int keyCode);

private:
    void EnsureVisible(std::int64_t row);
    void FollowView();

    forms::Playlist& m_form;
    modPlaylist& m_list;
    std::int32_t m_mwStep = 1;
};

} // namespace velmo
