#include "Transport.h"

#include "core/CallIfSet.h"
#include "core/NumberText.h"
#include "core/PathRules.h"
#include "core/SettingsKeys.h"

namespace velmo {

namespace {

bool IsLeft(const controls::MouseEvent& event)
{
    return event.button == controls::MouseButton::Left;
}

} // namespace

Transport::Transport(const modBass& bass,
                     modINI& settings,
                     ports::Files& files,
                     ports::Dialogs& dialogs,
                     TransportState& state,
                     TrackForms forms,
                     TrackListeners listeners,
                     MediaFilter& mediaFilter,
                     modBassFunctions& tracks,
                     DjMethods& dj,
                     RandomRow& randomRow)
    : m_bass(bass)
    , m_settings(settings)
    , m_files(files)
    , m_dialogs(dialogs)
    , m_state(state)
    , m_forms(forms)
    , m_rows(forms.playlist.pl)
    , m_listeners(listeners)
    , m_mediaFilter(mediaFilter)
    , m_tracks(tracks)
    , m_dj(dj)
    , m_randomRow(randomRow)
{}

void Transport::imgPlay_MouseUp(const controls::MouseEvent& event)
{
    if (IsLeft(event)) {
        m_tracks.TickerToStart();
        if (m_rows.Count() == 0) {
            m_state.AdvanceRequested = false;
            m_forms.wmain.tmrBASS.Enabled = false;
            OpenAndPlayDialog();
            return;
        }
        // Kept: with the playlist hidden nothing starts, and an automatic run ends here.
        if (!m_forms.playlist.Visible)
            return;
        m_forms.wmain.tmrBASS.Enabled = false;
        if (!m_state.AdvanceRequested)
            StartSelected();
        else if (m_dj.AdvanceByMethod() == DjMethods::Then::EndHandler)
            return;
    }
    m_listeners.list.UpdateListScrollBar();
}

void Transport::imgPause_MouseUp(const controls::MouseEvent& event)
{
    if (!IsLeft(event)
        || m_bass.BASS_ChannelIsActive(m_state.CurrentChannel) == BASS_ACTIVE_STOPPED)
        return;
    if (m_state.PausedFlag)
        Resume();
    else
        Pause();
}

void Transport::imgStop_MouseUp(const controls::MouseEvent& event)
{
    if (IsLeft(event))
        Stop();
}

void Transport::imgNext_MouseUp(const controls::MouseEvent& event)
{
    if (!IsLeft(event))
        return;
    m_tracks.TickerToStart();
    m_forms.wmain.tmrBASS.Enabled = false;
    if (!PlaylistCanStep())
        return;
    const std::size_t row = m_rows.SelectedEntry();
    Step(row < m_rows.Count() ? row + 1 : 1);
}

void Transport::imgBack_MouseUp(const controls::MouseEvent& event)
{
    if (!IsLeft(event))
        return;
    m_tracks.TickerToStart();
    m_forms.wmain.tmrBASS.Enabled = false;
    if (!PlaylistCanStep())
        return;
    const std::size_t row = m_rows.SelectedEntry();
    Step(row > 1 ? row - 1 : m_rows.Count());
}

void Transport::imgOpen_MouseUp(const controls::MouseEvent& event)
{
    if (IsLeft(event))
        OpenAndPlayDialog();
}

void Transport::OpenAndPlayDialog()
{
    m_mediaFilter.BuildExtensionFilter();
    const ports::FileDialogAnswer answer = m_dialogs.ChooseFiles({
        .kind = ports::FileDialogKind::Open,
        .owner = m_forms.wmain.Name,
        .title = "Open And Play",
        .filter = m_mediaFilter.OpenMediaFilter(),
        .folder = m_settings.ReadSetting(sections::RTM, keys::TempDir3, "c:\\"),
        .fileName = {},
    });
    if (answer.paths.empty())
        return;
    const std::string& path = answer.paths.front();
    m_tracks.OpenAndPlay(path);
    m_settings.WriteSetting(sections::RTM, keys::TempDir3, FileDirectory(path, m_files));
    m_listeners.list.UpdateListScrollBar();
}

void Transport::PlayRandomEntry()
{
    if (m_rows.Count() > 0) {
        m_randomRow.Seed();
        const std::size_t row = m_randomRow.Pick(m_rows.Count());
        m_listeners.list.DeselectAllEntries();
        m_rows.Mark(row);
        m_state.AdvanceRequested = false;
        m_rows.EnsureVisible(row);
        m_forms.playlist.scBar.SetPosition(static_cast<std::int32_t>(row));
        m_tracks.PlayTrack(SelectedPath(m_rows));
        m_listeners.list.WakeTitleReader();
    }
    m_listeners.list.UpdateListScrollBar();
}

void Transport::PlaySelected()
{
    m_forms.wmain.tmrBASS.Enabled = false;
    m_tracks.PlayTrack(SelectedPath(m_rows));
}

void Transport::Stop()
{
    // Kept: "heared" in the title; `PausedFlag`, `AdvanceRequested` and the handles stay.
    constexpr const char* StoppedTitle = "Velmo Player - Made to be heared!    ***  ";
    m_forms.wmain.tmrBASS.Enabled = false;
    for (const DWORD channel : {m_state.CurrentChannel, m_state.NextChannel}) {
        m_bass.BASS_ChannelStop(channel);
        m_bass.BASS_StreamFree(channel);
    }
    m_tracks.TickerToStart();
    m_forms.wmain.lblTime.Caption = IdleTime;
    SetSongName(m_forms.wmain, m_state, StoppedTitle);
    m_listeners.status.UpdateYahooStopped();
}

void Transport::Mute()
{
    MuteVolume(m_bass, m_state);
}

void Transport::StartSelected()
{
    m_rows.EnsureVisible(m_rows.SelectedEntry());
    m_tracks.PlayTrack(SelectedPath(m_rows));
    m_listeners.list.WakeTitleReader();
}

void Transport::Step(std::size_t row)
{
    m_listeners.list.DeselectAllEntries();
    m_rows.Mark(row);
    m_state.AdvanceRequested = false;
    StartSelected();
}

void Transport::Pause()
{
    forms::wmain& window = m_forms.wmain;
    window.tmrBASS.Enabled = false;
    m_bass.BASS_ChannelPause(m_state.CurrentChannel);
    m_bass.BASS_ChannelPause(m_state.NextChannel);
    m_state.PausedTimeText = window.lblTime.Caption;
    window.lblTime.Caption = "Paused";
    m_state.PausedFlag = true;
}

void Transport::Resume()
{
    m_bass.BASS_ChannelPlay(m_state.CurrentChannel, 0);
    m_bass.BASS_ChannelPlay(m_state.NextChannel, 0);
    CallIfSet(m_state.SoundStarts);
    m_forms.wmain.lblTime.Caption = m_state.PausedTimeText;
    m_state.PausedFlag = false;
    m_forms.wmain.tmrBASS.Enabled = true;
}

bool Transport::PlaylistCanStep() const
{
    return m_forms.playlist.Visible && m_rows.Count() > 0;
}

void MuteVolume(const modBass& bass, TransportState& state)
{
    const float volume = bass.BASS_GetVolume();
    if (volume != 0 || state.MuteSavedVolume != 0)
        state.MuteSavedVolume = RoundHalfEven(static_cast<double>(volume));
    bass.BASS_SetVolume(0);
}

} // namespace velmo
