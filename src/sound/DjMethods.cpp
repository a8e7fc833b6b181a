#include "DjMethods.h"

#include "DjSettings.h"

#include <stdexcept>

namespace velmo {

namespace {

/// With many rows of the same path a random run draws again and again; after that many it ends as
/// it does on the pick 0.
constexpr int MaxDraws = 10000;

bool IsRandom(double method)
{
    return method == dj_method::Random || method == dj_method::RandomErasing;
}

} // namespace

DjMethods::DjMethods(const modBass& bass,
                     modINI& settings,
                     TransportState& state,
                     TrackForms forms,
                     modPlaylist& list,
                     modBassFunctions& tracks,
                     RandomRow& randomRow)
    : m_bass(bass)
    , m_settings(settings)
    , m_state(state)
    , m_forms(forms)
    , m_rows(forms.playlist.pl)
    , m_list(list)
    , m_tracks(tracks)
    , m_randomRow(randomRow)
{}

DjMethods::Then DjMethods::AdvanceByMethod()
{
    if (IsCrossFadeOn(m_settings)) {
        StartPrepared();
        return Then::LastStep;
    }
    if (!MarkNextRow()) {
        m_state.AdvanceRequested = false;
        return Then::EndHandler;
    }
    StartSelected();
    m_state.AdvanceRequested = false;
    return Then::LastStep;
}

/// Kept: `AdvanceRequested` stays set, so that the next press of Play comes here again and ends
/// what plays.
void DjMethods::StartPrepared()
{
    if (m_bass.BASS_ChannelIsActive(m_state.CurrentChannel) == BASS_ACTIVE_PLAYING) {
        m_tracks.TickerToStart();
        m_bass.BASS_ChannelStop(m_state.CurrentChannel);
        m_bass.BASS_StreamFree(m_state.CurrentChannel);
        m_forms.wmain.lblTime.Caption = IdleTime;
    }
    if (CrossFadeDelay(m_settings) >= 0)
        m_tracks.PlayPrepared(m_state.NextChannel);
    m_state.CurrentChannel = m_state.NextChannel;
}

/// Marks the row that follows. False if the run is over.
bool DjMethods::MarkNextRow()
{
    const double method = DjMethod(m_settings);
    if (IsRandom(method))
        return MarkRandomRow();
    const std::size_t row = Row();
    if (method == dj_method::LinearDown) {
        if (row >= m_rows.Count())
            return false;
        m_list.DeselectAllEntries();
        m_rows.Mark(row + 1);
    } else if (method == dj_method::LinearUp) {
        m_list.DeselectAllEntries();
        m_rows.Mark(row - 1); // Kept: row 1 has no row above it, which breaks the advance off
    }
    return true;
}

bool DjMethods::MarkRandomRow()
{
    m_randomRow.Seed();
    for (int draw = 0; draw < MaxDraws; ++draw) {
        const std::size_t pick = m_randomRow.Pick(m_rows.Count());
        m_list.DeselectAllEntries();
        m_rows.Mark(pick);
        if (IsAllowed(SelectedPath(m_rows)))
            return true;
        if (m_rows.Count() == 1)
            return false;
    }
    m_list.DeselectAllEntries();
    throw std::out_of_range("no row of another path found");
}

void DjMethods::StartSelected()
{
    m_rows.EnsureVisible(Row());
    m_tracks.PlayTrack(SelectedPath(m_rows));
    m_list.WakeTitleReader();
    if (DjMethod(m_settings) == dj_method::RandomErasing)
        m_rows.Remove(Row());
}

void DjMethods::PrepareNextTrack()
{
    if (!ChoosePlayIndex()) {
        m_state.AdvanceRequested = false;
        return;
    }
    m_tracks.LoadNextChannel(m_rows.Row(static_cast<std::size_t>(m_state.PlayIndex)).Path);
}

/// False at the list's end. The index may lie outside the list.
bool DjMethods::ChoosePlayIndex()
{
    const double method = DjMethod(m_settings);
    if (IsRandom(method))
        return ChooseRandomIndex();
    const auto row = static_cast<std::int32_t>(Row());
    const auto count = static_cast<std::int32_t>(m_rows.Count());
    // Kept: down goes up here, and up goes down.
    if (method == dj_method::LinearDown) {
        if (row >= count)
            return false;
        m_state.PlayIndex = row - 1;
    } else if (method == dj_method::LinearUp) {
        if (row < 1)
            return false;
        m_state.PlayIndex = row + 1;
    } else if (method == dj_method::Selected) {
        m_state.PlayIndex = row;
        return count > 0;
    }
    return true;
}

bool DjMethods::ChooseRandomIndex()
{
    m_randomRow.Seed();
    for (int draw = 0; draw < MaxDraws; ++draw) {
        const std::size_t pick = m_randomRow.Pick(m_rows.Count());
        m_state.PlayIndex = static_cast<std::int32_t>(pick);
        if (IsAllowed(m_rows.Row(pick).Path))
            return true;
        if (m_rows.Count() == 1)
            return false;
    }
    m_state.PlayIndex = 0;
    return true;
}

/// Whether a random choice may hit that path.
bool DjMethods::IsAllowed(const std::string& path)
{
    return path != m_state.CurrentFile || !AssuresNotTheSame(m_settings);
}

std::size_t DjMethods::Row() const
{
    return m_rows.SelectedEntry();
}

std::string SelectedPath(const controls::ListRows& rows)
{
    return rows.Row(rows.SelectedEntry()).Path;
}

} // namespace velmo
