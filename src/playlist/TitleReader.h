#pragma once

#include "Ordering.h"
#include "TrackStarter.h"
#include "modPlaylist.h"
#include "modTags.h"

#include "core/modINI.h"
#include "forms/Playlist.h"
#include "ports/Files.h"

#include <string>

namespace velmo {

/// The handler of `tmrInfo`: while the timer is on, each tick reads title and length of one row,
/// up to the 32nd from the top of the view on. `modPlaylist` wakes it. User-interface thread only.
class TitleReader final
{
public:
    /// `startPath` is what the process's command line means; empty if it means nothing. With one,
    /// a tick plays row 1 as long as no channel is open.
    TitleReader(modPlaylist& list,
                forms::Playlist& playlist,
                modTags& tags,
                Ordering& ordering,
                TrackStarter& starter,
                modINI& settings,
                ports::Files& files,
                std::string startPath);

    /// One tick. A step that fails is passed over.
    void tmrInfo_Timer();

private:
    void PlayStartPath();
    void ReadRow(std::size_t row);

    modPlaylist& m_list;
    forms::Playlist& m_playlist;
    modTags& m_tags;
    Ordering& m_ordering;
    TrackStarter& m_starter;
    modINI& m_settings;
    ports::Files& m_files;
    std::string m_startPath;
};

} // namespace velmo
