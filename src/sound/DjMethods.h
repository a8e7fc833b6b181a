#pragma once

#include "RandomRow.h"
#include "modBassFunctions.h"

#include <string>

namespace velmo {

/// The choice of the next track, by the DJ method. There are two: the advance at a track's end, and
/// the preparation of an overlap. They differ, and both stay as they are: in methods 3 and 4 they
/// walk the list in opposite directions, each with the test of the other's direction.
///
/// Neither has a trap: a row outside the list raises a failure, which ends the operation where it
/// stands and is the caller's. User-interface thread only.
class DjMethods
{
public:
    DjMethods(const modBass& bass,
              modINI& settings,
              TransportState& state,
              TrackForms forms,
              modPlaylist& list,
              modBassFunctions& tracks,
              RandomRow& randomRow);

    /// What the handler that asked for the advance does next.
    enum class Then
    {
        LastStep,  ///< goes to its last step
        EndHandler ///< ends there
    };

    /// Starts what follows the track that has ended: with "CrossFade" the prepared channel, else a
    /// row by the method.
    Then AdvanceByMethod();

    /// Chooses the row `PlayIndex` and opens it on `NextChannel`, without starting it. At the
    /// list's end it opens nothing.
    void PrepareNextTrack();

private:
    void StartPrepared();
    bool MarkNextRow();
    bool MarkRandomRow();
    void StartSelected();
    bool ChoosePlayIndex();
    bool ChooseRandomIndex();
    bool IsAllowed(const std::string& path);
    std::size_t Row() const;

    const modBass& m_bass;
    modINI& m_settings;
    TransportState& m_state;
    TrackForms m_forms;
    controls::ListRows& m_rows;
    modPlaylist& m_list;
    modBassFunctions& m_tracks;
    RandomRow& m_randomRow;
};

/// The path of the row with the focus; raises an index error if there is none.
std::string SelectedPath(const controls::ListRows& rows);

} // namespace velmo
