#include "TitleReader.h"

#include <utility>

namespace velmo {

TitleReader::TitleReader(forms::Playlist& playlist, TrackStarter& starter, std::string startPath)
    : m_playlist(playlist)
    , m_starter(starter)
    , m_startPath(std::move(startPath))
{}

void TitleReader::tmrInfo_Timer()
{
    // The timer goes off first: starting a track may serve events, and a second tick would start it
    // again.
    m_playlist.tmrInfo.Enabled = false;
    if (!m_startPath.empty() && !m_starter.HasChannel() && m_playlist.pl.Count() > 0)
        m_starter.PlayTrack(m_playlist.pl.Row(1).Path);
}

} // namespace velmo
