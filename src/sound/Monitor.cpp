#include "Monitor.h"

#include "DjSettings.h"

#include "core/Ignoring.h"
#include "core/NumberText.h"
#include "playlist/EntryText.h"

#include <cmath>
#include <utility>

namespace velmo {

Monitor::Monitor(const modBass& bass,
                 modINI& settings,
                 TransportState& state,
                 TrackForms forms,
                 modBassFunctions& tracks,
                 DjMethods& dj,
                 Transport& transport)
    : m_bass(bass)
    , m_settings(settings)
    , m_state(state)
    , m_forms(forms)
    , m_tracks(tracks)
    , m_dj(dj)
    , m_transport(transport)
    , m_queries(bass)
{}

void Monitor::MonitorTick()
{
    if (m_queries.IsPlaying(m_state.CurrentChannel) || m_queries.IsPlaying(m_state.NextChannel)) {
        ShowTimes();
        OverlapIfDue();
        MoveTicker();
    } else if (IsStopped(m_state.CurrentChannel)) {
        TrackEnded();
    }
    AdoptNextChannel();
}

void Monitor::ShowTimes()
{
    std::string text = TimeOf(m_state.CurrentChannel);
    if (m_queries.IsPlaying(m_state.NextChannel) && m_state.NextChannel != m_state.CurrentChannel)
        text += "/" + TimeOf(m_state.NextChannel);
    m_forms.wmain.lblTime.Caption = text;
}

std::string Monitor::TimeOf(DWORD channel) const
{
    const float position = m_queries.ChannelSeconds(channel);
    if (m_state.TimeElapsedMode)
        return FormatSeconds(RoundHalfEven(static_cast<double>(position)));
    const float rest = m_queries.ChannelLengthSeconds(channel) - position;
    return "-" + FormatSeconds(RoundHalfEven(static_cast<double>(rest)));
}

void Monitor::OverlapIfDue()
{
    const std::optional<DWORD> dueBefore = std::exchange(m_dueChannel, std::nullopt);
    if (!IsCrossFadeOn(m_settings))
        return;
    const std::int32_t delay = CrossFadeDelay(m_settings);
    if (!IsDelayReached(delay))
        return;
    m_dueChannel = m_state.CurrentChannel;
    // Two ticks in a row may see the same second; the second one would free what the first one
    // has started.
    if (dueBefore == m_state.CurrentChannel)
        return;
    // Lost on failure, here and below: the next track, as at the list's end.
    Ignoring([&] { m_dj.PrepareNextTrack(); });
    if (delay < 0) {
        Ignoring([&] { m_tracks.PlayPrepared(m_state.NextChannel); });
        ShowTimes();
    }
}

bool Monitor::IsDelayReached(std::int32_t delay) const
{
    const float rest = m_queries.ChannelLengthSeconds(m_state.CurrentChannel)
                       - m_queries.ChannelSeconds(m_state.CurrentChannel);
    return Int(static_cast<double>(rest)) == std::abs(static_cast<double>(delay));
}

void Monitor::MoveTicker()
{
    forms::wmain& window = m_forms.wmain;
    const auto length = static_cast<double>(m_queries.ChannelLengthSeconds(m_state.CurrentChannel));
    const double range = window.imgPositionBar.Width - window.imgPositionTicker.Width;
    if (length != 0) {
        const double perSecond = RoundHalfEven(range) / length;
        const auto position = static_cast<double>(m_queries.ChannelSeconds(m_state.CurrentChannel));
        const double offset = RoundHalfEven(position) * perSecond;
        if (offset < range)
            window.imgPositionTicker.Left = window.imgPositionBar.Left + offset;
    }
    if (window.lblTime.Caption.Get() == IdleTime)
        m_tracks.TickerToStart();
}

void Monitor::TrackEnded()
{
    m_forms.wmain.lblTime.Caption = IdleTime;
    m_tracks.TickerToStart();
    const double method = DjMethod(m_settings);
    m_forms.wmain.tmrBASS.Enabled = false;
    if (method == dj_method::Manual)
        return;
    m_bass.BASS_ChannelStop(m_state.CurrentChannel);
    // Lost on failure: the next track. The monitor then stays off.
    if (method == dj_method::Repeat) {
        Ignoring([&] { m_tracks.PlayTrack(SelectedPath(m_forms.playlist.pl)); });
    } else {
        m_state.AdvanceRequested = true;
        Ignoring([&] { m_transport.imgPlay_MouseUp({.button = controls::MouseButton::Left}); });
    }
}

/// Kept from silence: a channel that was prepared and not started is Play's to start, and stays
/// where it is.
void Monitor::AdoptNextChannel()
{
    if (IsStopped(m_state.CurrentChannel) && !IsStopped(m_state.NextChannel)) {
        m_state.CurrentChannel = m_state.NextChannel;
        m_state.NextChannel = 0;
    }
}

bool Monitor::IsStopped(DWORD channel) const
{
    return m_bass.BASS_ChannelIsActive(channel) == BASS_ACTIVE_STOPPED;
}

} // namespace velmo
