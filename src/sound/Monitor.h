#pragma once

#include "ChannelQueries.h"
#include "DjMethods.h"
#include "Transport.h"
#include "TransportState.h"
#include "modBassFunctions.h"

#include <optional>

namespace velmo {

/// The handler of `tmrBASS`: once a second it shows the time, moves the ticker, prepares or starts
/// the next track when the rest of this one equals the delay of the crossfade, and sees whether the
/// track has ended. The library is only ever asked, never asked to call back. User-interface thread
/// only.
///
/// A crossfade is a matter of time alone; no level is ever touched. With a delay of -n seconds the
/// next track starts n seconds before the end of this one, and when this one ends the two change
/// places. With +n it is only opened, and Play starts it at the end; since then both handles name
/// the same channel, the next preparation frees the track that plays, so that each track from the
/// second on is cut n seconds short.
class Monitor
{
public:
    Monitor(const modBass& bass,
            modINI& settings,
            TransportState& state,
            TrackForms forms,
            modBassFunctions& tracks,
            DjMethods& dj,
            Transport& transport);

    /// One tick. A step that fails is passed over.
    void MonitorTick();

    /// `lblTime` by the mode: position or rest of the current channel, and of the next one while
    /// both play.
    void ShowTimes();

private:
    std::string TimeOf(DWORD channel) const;
    void OverlapIfDue();
    bool IsDelayReached(std::int32_t delay) const;
    void MoveTicker();
    void TrackEnded();
    void AdoptNextChannel();
    bool IsStopped(DWORD channel) const;

    const modBass& m_bass;
    modINI& m_settings;
    TransportState& m_state;
    TrackForms m_forms;
    modBassFunctions& m_tracks;
    DjMethods& m_dj;
    Transport& m_transport;
    ChannelQueries m_queries;
    std::optional<DWORD> m_dueChannel; ///< the channel whose delay the tick before saw reached
};

} // namespace velmo
