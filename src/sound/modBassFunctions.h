#pragma once

#include "ChannelQueries.h"
#include "StatusChanger.h"
#include "TransportState.h"

#include "bass/modBass.h"
#include "core/modINI.h"
#include "equalizer/modFXFunctions.h"
#include "forms/ErrMGR.h"
#include "forms/Playlist.h"
#include "forms/wmain.h"
#include "playlist/TrackStarter.h"
#include "playlist/modPlaylist.h"
#include "playlist/modTags.h"
#include "ports/Files.h"

#include <string>

namespace velmo {

/// The forms that starting a track touches.
struct TrackForms
{
    forms::wmain& wmain;
    forms::Playlist& playlist;
    forms::ErrMGR& errMGR;
};

/// Whom starting a track tells.
struct TrackListeners
{
    modPlaylist& list;
    StatusChanger& status;
};

/// Opens files and starts tracks. User-interface thread only.
///
/// `PlayTrack`, `PlayPrepared` and `OpenAndPlay` are lists of steps of which each goes on where the
/// one before it failed; a failed opening shows itself in the handle 0, which every call of the
/// library takes quietly.
class modBassFunctions final : public TrackStarter
{
public:
    modBassFunctions(const modBass& bass,
                     modINI& settings,
                     ports::Files& files,
                     modTags& tags,
                     modFXFunctions& equalizer,
                     TransportState& state,
                     TrackForms forms,
                     TrackListeners listeners);

    /// Stops what plays, opens the file (as a stream, then as a module) and starts it from its
    /// beginning; shows its title, starts the monitor and puts the equalizer on. Before anything
    /// has played in this process a file that can't be played is reported in `ErrMGR`; later ones
    /// pass with their title shown.
    void PlayTrack(const std::string& path) override;

    /// `PlayTrack` for a file that is not of the list: the monitor is stopped with what plays, no
    /// entry is refreshed.
    void OpenAndPlay(const std::string& path);

    /// Starts `channel`, which `LoadNextChannel` has opened for row `PlayIndex`. Stops nothing.
    /// Raises an index error if there is no such row; then nothing is marked.
    void PlayPrepared(DWORD channel);

    /// Opens the file as `NextChannel` and doesn't start it. What was in `NextChannel` is freed, if
    /// it is a stream.
    void LoadNextChannel(const std::string& path);

    /// Shows `text` in the error window, centred over `owner`. Returns at once.
    void ShowError(const std::string& text, const controls::Form& owner) override;

    /// `imgPositionTicker` to the left edge of `imgPositionBar`.
    void TickerToStart();

    bool HasChannel() const override;

private:
    bool StopIfPlaying(DWORD channel);
    DWORD Open(const std::string& path);
    bool StartChannel(DWORD channel);
    void ShowStarted(DWORD channel);
    void ReportUnplayable();
    void RefreshSelectedEntry(DWORD channel);
    void ShowTitle(DWORD channel, const std::string& path);
    std::string TitleOfFile(std::string path);

    const modBass& m_bass;
    modINI& m_settings;
    ports::Files& m_files;
    modTags& m_tags;
    modFXFunctions& m_equalizer;
    TransportState& m_state;
    TrackForms m_forms;
    TrackListeners m_listeners;
    ChannelQueries m_queries;
};

} // namespace velmo
