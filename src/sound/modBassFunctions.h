#pragma once

#include "ChannelQueries.h"
#include "TransportState.h"

#include "bass/modBass.h"
#include "core/modINI.h"
#include "forms/ErrMGR.h"
#include "forms/Playlist.h"
#include "forms/wmain.h"
#include "playlist/TitleReader.h"
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

/// Opens files and starts tracks. User-interface thread only.
///
/// `PlayTrack` and `PlayPrepared` are lists of steps of which each goes on where the one before it
/// failed; a failed opening shows itself in the handle 0, which every call of the library takes
/// quietly.
class modBassFunctions final : public TrackStarter
{
public:
    modBassFunctions(const modBass& bass,
                     modINI& settings,
                     ports::Files& files,
                     modTags& tags,
                     TransportState& state,
                     TrackForms forms);

    /// Stops what plays, opens the file (as a stream, then as a module) and starts it from its
    /// beginning; shows its title and starts the monitor. Before anything has played in this
    /// process a file that can't be played is reported in `ErrMGR`; later ones pass with their
    /// title shown.
    void PlayTrack(const std::string& path) override;

    /// Starts `channel`, which `LoadNextChannel` has opened for row `PlayIndex`. Stops nothing.
    /// Raises an index error if there is no such row.
    void PlayPrepared(DWORD channel);

    /// Opens the file as `NextChannel` and doesn't start it. What was in `NextChannel` is freed, if
    /// it is a stream.
    void LoadNextChannel(const std::string& path);

    /// Shows `text` in the error window, centred over `owner`. Returns at once.
    void ShowError(const std::string& text, const controls::Form& owner);

    /// `imgPositionTicker` to the left edge of `imgPositionBar`.
    void TickerToStart();

    bool HasChannel() const override;

private:
    void StopIfPlaying(DWORD channel);
    DWORD Open(const std::string& path);
    bool StartChannel(DWORD channel);
    void ReportUnplayable();
    void RefreshSelectedEntry(DWORD channel);
    void ShowTitle(DWORD channel, const std::string& path);
    std::string TitleOfFile(std::string path);

    const modBass& m_bass;
    modINI& m_settings;
    ports::Files& m_files;
    modTags& m_tags;
    TransportState& m_state;
    TrackForms m_forms;
    ChannelQueries m_queries;
};

} // namespace velmo
