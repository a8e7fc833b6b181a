#pragma once

#include "ChannelQueries.h"
#include "TransportState.h"
#include "modBassFunctions.h"

namespace velmo {

/// The handler of `tmrBASS`: once a second it shows the time, moves the ticker and sees whether the
/// track has ended. The library is only ever asked, never asked to call back. User-interface thread
/// only.
class Monitor
{
public:
    Monitor(const modBass& bass, TransportState& state, TrackForms forms, modBassFunctions& tracks);

    /// One tick. A step that fails is passed over.
    void MonitorTick();

    /// `lblTime` by the mode: position or rest of the current channel, and of the next one while
    /// both play.
    void ShowTimes();

private:
    std::string TimeOf(DWORD channel) const;
    void MoveTicker();
    void TrackEnded();

    const modBass& m_bass;
    TransportState& m_state;
    TrackForms m_forms;
    modBassFunctions& m_tracks;
    ChannelQueries m_queries;
};

} // namespace velmo
