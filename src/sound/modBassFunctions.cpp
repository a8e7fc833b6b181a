#include "modBassFunctions.h"

#include "ChannelFlags.h"
#include "DjSettings.h"

#include "bass/FileOpening.h"
#include "core/CallIfSet.h"
#include "core/Ignoring.h"
#include "core/NumberText.h"
#include "core/RunError.h"
#include "core/SettingsKeys.h"
#include "core/TextRules.h"
#include "playlist/EntryText.h"

namespace velmo {

modBassFunctions::modBassFunctions(const modBass& bass,
                                   modINI& settings,
                                   ports::Files& files,
                                   modTags& tags,
                                   modFXFunctions& equalizer,
                                   TransportState& state,
                                   TrackForms forms,
                                   TrackListeners listeners)
    : m_bass(bass)
    , m_settings(settings)
    , m_files(files)
    , m_tags(tags)
    , m_equalizer(equalizer)
    , m_state(state)
    , m_forms(forms)
    , m_listeners(listeners)
    , m_queries(bass)
{}

void modBassFunctions::PlayTrack(const std::string& path)
{
    m_state.CurrentFile = path;
    StopIfPlaying(m_state.CurrentChannel);
    StopIfPlaying(m_state.NextChannel);
    m_state.CurrentChannel = Open(path);
    if (StartChannel(m_state.CurrentChannel)) {
        // Lost on failure: the entry keeps its old text and length.
        Ignoring([&] { RefreshSelectedEntry(m_state.CurrentChannel); });
        ShowStarted(m_state.CurrentChannel);
    }
    m_equalizer.ApplyIfOn(m_state.CurrentChannel);
    m_listeners.status.UpdateYahooPlaying(m_state.CurrentFile);
}

void modBassFunctions::OpenAndPlay(const std::string& path)
{
    m_state.CurrentFile = path;
    for (const DWORD channel : {m_state.CurrentChannel, m_state.NextChannel})
        if (StopIfPlaying(channel))
            m_forms.wmain.tmrBASS.Enabled = false;
    m_state.CurrentChannel = Open(path);
    if (StartChannel(m_state.CurrentChannel))
        ShowStarted(m_state.CurrentChannel);
    m_equalizer.ApplyIfOn(m_state.CurrentChannel);
    m_listeners.status.UpdateYahooPlaying(m_state.CurrentFile);
}

void modBassFunctions::PlayPrepared(DWORD channel)
{
    controls::ListRows& rows = m_forms.playlist.pl;
    const auto row = static_cast<std::size_t>(m_state.PlayIndex);
    m_listeners.list.DeselectAllEntries();
    rows.Mark(row);
    rows.EnsureVisible(rows.SelectedEntry());
    m_listeners.list.WakeTitleReader();
    m_state.CurrentFile = rows.Row(row).Path;
    if (StartChannel(channel)) {
        Ignoring([&] { RefreshSelectedEntry(channel); });
        ShowStarted(channel);
    }
    m_equalizer.ApplyIfOn(channel);
    if (DjMethod(m_settings) == dj_method::RandomErasing)
        rows.Remove(row);
    m_listeners.status.UpdateYahooPlaying(m_state.CurrentFile);
}

void modBassFunctions::LoadNextChannel(const std::string& path)
{
    // Kept: only streams are freed here; a module plays on under the next track.
    m_bass.BASS_StreamFree(m_state.NextChannel);
    m_state.NextChannel = Open(path);
}

void modBassFunctions::ShowError(const std::string& text, const controls::Form& owner)
{
    forms::ErrMGR& window = m_forms.errMGR;
    window.txtMessage.Text = text;
    window.Left = owner.Left + owner.Width / 2 - window.Width / 2;
    window.Top = owner.Top + owner.Height / 2 - window.Height / 2;
    window.Show();
}

void modBassFunctions::TickerToStart()
{
    m_forms.wmain.imgPositionTicker.Left = m_forms.wmain.imgPositionBar.Left;
}

bool modBassFunctions::HasChannel() const
{
    return m_state.CurrentChannel != 0;
}

/// False if there was nothing to stop.
bool modBassFunctions::StopIfPlaying(DWORD channel)
{
    if (!m_queries.IsPlaying(channel))
        return false;
    TickerToStart();
    m_bass.BASS_ChannelStop(channel);
    m_forms.wmain.lblTime.Caption = IdleTime;
    return true;
}

DWORD modBassFunctions::Open(const std::string& path)
{
    const OpenFlags flags = ChannelFlags(m_settings);
    DWORD channel = OpenStream(m_bass, m_files, path, flags.stream);
    if (channel == 0)
        channel = OpenModule(m_bass, m_files, path, flags.module);
    if (channel == 0)
        channel = OpenLocation(m_bass, path, flags.module);
    return channel;
}

/// Starts the channel. False if nothing has ever played in this process, which then has been
/// reported.
bool modBassFunctions::StartChannel(DWORD channel)
{
    m_bass.BASS_ChannelPlay(channel, 1);
    CallIfSet(m_state.SoundStarts);
    if (m_queries.IsPlaying(channel))
        m_state.PlayStartedFlag = true;
    if (!m_state.PlayStartedFlag) {
        ReportUnplayable();
        return false;
    }
    m_forms.wmain.imgPositionTicker.Visible = true;
    m_forms.wmain.imgPositionBar.Visible = true;
    return true;
}

void modBassFunctions::ShowStarted(DWORD channel)
{
    ShowTitle(channel, m_state.CurrentFile);
    m_forms.wmain.tmrBASS.Enabled = true;
}

void modBassFunctions::ReportUnplayable()
{
    const int code = m_bass.BASS_ErrorGetCode();
    ShowError("Can't play file.\nUnknown file format or file not audio.\nError code: "
                  + std::to_string(code),
              m_forms.playlist);
    m_forms.wmain.imgPositionTicker.Visible = false;
    m_forms.wmain.imgPositionBar.Visible = false;
    SetSongName(m_forms.wmain, m_state, IdleTitle);
}

/// In mode "play" the selected entry gets its title and length now.
void modBassFunctions::RefreshSelectedEntry(DWORD channel)
{
    if (!EqualsIgnoringCase(
            m_settings.ReadSetting(sections::Options, keys::ReadTitlesOn, "display"), "play"))
        return;
    controls::ListRows& rows = m_forms.playlist.pl;
    const std::size_t row = rows.SelectedEntry();
    // Kept: it is the selected entry that is rewritten, though another path may be playing.
    controls::PlaylistEntry entry = rows.Row(row);
    std::string path = entry.Path; // reading rewrites it; the entry keeps its own
    std::string title = ConvertedTitle(m_tags.ReadFileTitle(path), m_settings);
    if (IsTrue(m_settings.ReadSetting(sections::Display, keys::ShowNumbersInPL, "True")))
        title = std::to_string(row) + ". " + title;
    entry.Text = title;
    const bool showsLength =
        IsTrue(m_settings.ReadSetting(sections::Options, keys::ShowLengthInPL, "true"));
    const auto seconds = static_cast<double>(m_queries.ChannelLengthSeconds(channel));
    entry.Length = showsLength ? FormatSeconds(RoundHalfEven(seconds)) : std::string();
    rows.SetRow(row, entry);
}

void modBassFunctions::ShowTitle(DWORD channel, const std::string& path)
{
    std::string title;
    // Lost on failure: the tags. The file's name serves.
    Ignoring([&] { title = m_tags.MakeTagTitle(channel); });
    if (title.empty()) {
        title = ConvertedTitle(TitleOfFile(path), m_settings);
    }
    m_state.CurrentTitleText = DecoratedTitle(title);
    SetSongName(m_forms.wmain, m_state, m_state.CurrentTitleText);
}

std::string modBassFunctions::TitleOfFile(std::string path)
{
    try {
        return m_tags.ReadFileTitle(path);
    } catch (const RunError&) {
        return m_tags.FileNameTitle(path); // no tag library
    }
}

} // namespace velmo
