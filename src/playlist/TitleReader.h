#pragma once

#include "core/modINI.h"
#include "forms/Playlist.h"

#include <string>

namespace velmo {

/// What the playlist asks of the player. Implemented by the module that starts tracks.
class TrackStarter
{
public:
    virtual ~TrackStarter() = default;

    /// Whether a channel was ever opened and the last opening did not fail.
    virtual bool HasChannel() const = 0;
    /// Starts the file.
    virtual void PlayTrack(const std::string& path) = 0;
};

/// The handler of `tmrInfo`. At its first tick after a start with a command line it starts the
/// entry of row 1.
class TitleReader
{
public:
    /// `startPath` is what the process's command line means; empty if it means nothing.
    TitleReader(forms::Playlist& playlist, TrackStarter& starter, std::string startPath);

    void tmrInfo_Timer();

private:
    forms::Playlist& m_playlist;
    TrackStarter& m_starter;
    std::string m_startPath;
};

} // namespace velmo
