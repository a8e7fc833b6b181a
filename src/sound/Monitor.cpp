#include "Monitor.h"

#include "core/Ignoring.h"
#include "core/NumberText.h"
#include "playlist/EntryText.h"

namespace velmo {

Monitor::Monitor(const modBass& bass,
                 TransportState& state,
                 TrackForms forms,
                 modBassFunctions& tracks)
    : m_bass(bass)
    , m_state(state)
    , m_forms(forms)
    , m_tracks(tracks)
    , m_queries(bass)
{}

void Monitor::MonitorTick()
{
    if (m_queries.IsPlaying(m_state.CurrentChannel) || m_queries.IsPlaying(m_state.NextChannel)) {
        ShowTimes();
        MoveTicker();
    } else if (m_bass.BASS_ChannelIsActive(m_state.CurrentChannel) == BASS_ACTIVE_STOPPED) {
        Ignoring([&] { TrackEnded(); });
    }
    // A channel that was prepared and not started yet is Play's to start.
    const bool nextIsActive =
        m_bass.BASS_ChannelIsActive(m_state.NextChannel) != BASS_ACTIVE_STOPPED;
    if (nextIsActive
        && m_bass.BASS_ChannelIsActive(m_state.CurrentChannel) == BASS_ACTIVE_STOPPED) {
        m_state.CurrentChannel = m_state.NextChannel;
        m_state.NextChannel = 0;
    }
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
    m_forms.wmain.tmrBASS.Enabled = false;
    m_bass.BASS_ChannelStop(m_state.CurrentChannel);
    controls::ListRows& rows = m_forms.playlist.pl;
    const std::size_t row = rows.SelectedEntry();
    if (row == 0 || row >= rows.Count())
        return;
    rows.DeselectAll();
    rows.Mark(row + 1);
    m_tracks.PlayTrack(rows.Row(row + 1).Path);
}

} // namespace velmo
