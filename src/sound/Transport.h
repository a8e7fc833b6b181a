#pragma once

#include "DjMethods.h"
#include "RandomRow.h"
#include "modBassFunctions.h"

#include "playlist/MediaFilter.h"
#include "playlist/modPlaylist.h"
#include "ports/Dialogs.h"

namespace velmo {

/// The transport controls of the main window and what the keyboard does in their place. They act on
/// the channels straight away. User-interface thread only.
///
/// A handler has no trap: a row outside the list ends it where it stands.
class Transport
{
public:
    Transport(const modBass& bass,
              modINI& settings,
              ports::Files& files,
              ports::Dialogs& dialogs,
              TransportState& state,
              TrackForms forms,
              TrackListeners listeners,
              MediaFilter& mediaFilter,
              modBassFunctions& tracks,
              DjMethods& dj,
              RandomRow& randomRow);

    /// Starts the selected entry, or, when the monitor has asked for the advance, what the DJ
    /// method says. With an empty list it asks for a file. Does not resume a pause. With the
    /// playlist hidden nothing starts.
    void imgPlay_MouseUp(const controls::MouseEvent& event);
    /// Pauses both channels, or goes on with both.
    void imgPause_MouseUp(const controls::MouseEvent& event);
    void imgStop_MouseUp(const controls::MouseEvent& event);
    /// To the next row, from the last one to the first; whatever the DJ method.
    void imgNext_MouseUp(const controls::MouseEvent& event);
    /// To the row before, from the first one to the last.
    void imgBack_MouseUp(const controls::MouseEvent& event);
    void imgOpen_MouseUp(const controls::MouseEvent& event);

    /// Asks for a file and plays it without adding it to the list.
    void OpenAndPlayDialog();
    /// Starts a row picked at random; the pick 0 deselects everything and starts nothing.
    void PlayRandomEntry();
    /// Starts the selected entry, whatever the monitor has asked for.
    void PlaySelected();
    /// Stops and frees both channels.
    void Stop();
    /// Silences the output. Only a move of the volume control gives the volume back.
    void Mute();

private:
    void StartSelected();
    void Step(std::size_t row);
    void Pause();
    void Resume();
    bool PlaylistCanStep() const;

    const modBass& m_bass;
    modINI& m_settings;
    ports::Files& m_files;
    ports::Dialogs& m_dialogs;
    TransportState& m_state;
    TrackForms m_forms;
    controls::ListRows& m_rows;
    TrackListeners m_listeners;
    MediaFilter& m_mediaFilter;
    modBassFunctions& m_tracks;
    DjMethods& m_dj;
    RandomRow& m_randomRow;
};

/// The mute key's step, which the exit takes too: the volume is kept as a whole number unless it is
/// 0 and none is kept, and is then set to 0.
void MuteVolume(const modBass& bass, TransportState& state);

} // namespace velmo
