#include "wmain.h"

#include "core/NumberText.h"
#include "core/SettingsKeys.h"
#include "core/TextRules.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace velmo {

namespace {

/// A number of the settings as a colour; what no colour is comes as near as it can.
controls::Colour ColourOf(const std::string& text)
{
    constexpr double White = 0xFFFFFF;
    return static_cast<controls::Colour>(std::clamp(ParseNumber(text), 0.0, White));
}

} // namespace

wmain::wmain(forms::wmain& form,
             forms::Playlist& playlist,
             const modBass& bass,
             modINI& settings,
             ports::Desktop& desktop,
             TransportState& state,
             Monitor& monitor,
             LoadedWithMainWindow modules)
    : m_form(form)
    , m_playlist(playlist)
    , m_settings(settings)
    , m_desktop(desktop)
    , m_state(state)
    , m_monitor(monitor)
    , m_modules(modules)
    , m_queries(bass)
    , m_volume(form, bass, settings)
{}

void wmain::Load(const std::function<void()>& markMainWindow)
{
    markMainWindow();
    m_form.AlwaysOnTop =
        IsTrue(m_settings.ReadSetting(sections::Options, keys::AlwaysOnTop, "false"));
    m_volume.Restore();
    RestorePlace();
    m_playlist.Left = m_form.Left + m_form.Width;
    m_playlist.Top = m_form.Top.Get();
    m_state.MuteSavedVolume = 0;
    m_modules.spectrum.ReadSettings();
    m_state.TimeElapsedMode = IsTrue(m_settings.ReadSetting(sections::RTM, keys::TimeMode, "True"));
    ReadFont();
    m_modules.equalizer.Load();
    m_modules.curves.LoadDefaultEqualizer();
    m_modules.equalizer.ReadState();
    SetSongName(m_form, m_state, IdleTitle);
    m_form.lblTime.Caption = IdleTime;
    const bool minimized = EqualsIgnoringCase(
        m_settings.ReadSetting(sections::RTM, keys::State, "Normal"), "minimized");
    m_form.State = minimized ? controls::WindowState::Minimized : controls::WindowState::Normal;
    m_playlist.Visible = IsPlaylistWanted();
    m_form.Loaded = true;
}

void wmain::imgMinimize_MouseUp(const controls::MouseEvent& event)
{
    if (event.button != controls::MouseButton::Left || !ReleasedInside(m_form.imgMinimize, event))
        return;
    m_minimizedByButton = true;
    m_playlist.Hide();
    m_form.State = controls::WindowState::Minimized;
}

void wmain::RestorePlaylist()
{
    if (m_form.State.Get() != controls::WindowState::Normal
        || !std::exchange(m_minimizedByButton, false))
        return;
    if (IsPlaylistWanted())
        m_playlist.Show();
}

void wmain::lblTime_MouseDown(const controls::MouseEvent& event)
{
    if (event.button != controls::MouseButton::Left)
        return;
    m_state.TimeElapsedMode = !m_state.TimeElapsedMode;
    m_settings.WriteSetting(
        sections::RTM, keys::TimeMode, m_state.TimeElapsedMode ? "True" : "False");
    if (m_queries.IsPlaying(m_state.CurrentChannel))
        m_monitor.ShowTimes();
}

void wmain::imgPositionBar_MouseDown(const controls::MouseEvent& event)
{
    if (event.button == controls::MouseButton::Left)
        SeekToOffset(RoundHalfEven(event.x));
}

void wmain::imgPositionTicker_MouseDown(const controls::MouseEvent& event)
{
    if (event.button != controls::MouseButton::Left)
        return;
    m_positionDragging = true;
    m_form.tmrBASS.Enabled = false; // the monitor must not fight the mouse
    m_positionDragStart = RoundHalfEven(event.x);
}

void wmain::imgPositionTicker_MouseMove(const controls::MouseEvent& event)
{
    if (!m_positionDragging || LengthSeconds() <= 0)
        return;
    const double left =
        m_form.imgPositionTicker.Left - m_positionDragStart + RoundHalfEven(event.x);
    // Kept: past either end the knob stays where it was last.
    if (left >= m_form.imgPositionBar.Left && left < m_form.imgPositionBar.Left + Range())
        m_form.imgPositionTicker.Left = left;
}

void wmain::imgPositionTicker_MouseUp(const controls::MouseEvent& event)
{
    if (event.button != controls::MouseButton::Left)
        return;
    m_positionDragging = false;
    m_form.tmrBASS.Enabled = true;
    SeekToOffset(m_form.imgPositionTicker.Left - m_form.imgPositionBar.Left);
}

double wmain::Range() const
{
    return m_form.imgPositionBar.Width - m_form.imgPositionTicker.Width;
}

float wmain::LengthSeconds() const
{
    return m_queries.ChannelLengthSeconds(m_state.CurrentChannel);
}

/// Seeks to the whole second at that many twips from the bar's left end. Beyond the range it is one
/// second before the end.
void wmain::SeekToOffset(double offsetTwips)
{
    const auto length = static_cast<double>(LengthSeconds());
    if (length <= 0)
        return;
    const double step = Range() / length;
    double snapped = RoundHalfEven(std::floor(offsetTwips / step) * step);
    if (snapped > Range())
        snapped = RoundHalfEven(Range() - step);
    const double bytes = snapped / step * m_queries.BytesPerSecond(m_state.CurrentChannel);
    m_queries.SeekBytes(
        m_state.CurrentChannel, static_cast<DWORD>(std::llround(std::max(bytes, 0.0))), 0);
    m_monitor.ShowTimes();
    const auto seconds = static_cast<double>(m_queries.ChannelSeconds(m_state.CurrentChannel));
    m_form.imgPositionTicker.Left =
        m_form.imgPositionBar.Left + std::clamp(seconds * step, 0.0, Range());
}

/// Each of the two is taken by itself, and only if it lies on the desktop.
void wmain::RestorePlace()
{
    const double left = ParseNumber(m_settings.ReadSetting(sections::RTM, keys::X, "0"));
    const double top = ParseNumber(m_settings.ReadSetting(sections::RTM, keys::Y, "0"));
    const ports::Desktop::Size desktop = m_desktop.VirtualSize();
    if (left >= 0 && left <= desktop.width)
        m_form.Left = left;
    if (top >= 0 && top <= desktop.height)
        m_form.Top = top;
}

bool wmain::IsPlaylistWanted()
{
    return IsTrue(m_settings.ReadSetting(sections::RTM, keys::ShowPL, "true"));
}

void wmain::ReadFont()
{
    const auto text = [&](const char* key, const char* fallback) {
        return m_settings.ReadSetting(sections::Display, key, fallback);
    };
    std::string size = text(keys::FontSize, "8.5");
    std::replace(size.begin(), size.end(), ',', '.');
    const bool bold = IsTrue(text(keys::FontBold, "false"));
    const std::int32_t weight = RoundHalfEven(ParseNumber(text(keys::FontWeight, "400")));
    constexpr int BoldWeight = 700;
    m_form.lblSongName.Font = controls::Font{
        .name = text(keys::FontName, "Tahoma"),
        .sizePoints = ParseNumber(size),
        .weight = bold ? BoldWeight : weight,
        .italic = IsTrue(text(keys::FontItalic, "false")),
        .underline = IsTrue(text(keys::FontUnderline, "false")),
        .strikethrough = IsTrue(text(keys::FontStrikethrough, "false")),
    };
    m_form.lblSongName.ForeColor = ColourOf(text(keys::FontColor, "&HFFFF00"));
}

bool ReleasedInside(const controls::Control& control, const controls::MouseEvent& event)
{
    return event.x >= 0 && event.x <= control.Width && event.y >= 0 && event.y <= control.Height;
}

} // namespace velmo
