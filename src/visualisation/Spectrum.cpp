#include "Spectrum.h"

#include "core/NumberText.h"
#include "core/SettingsKeys.h"
#include "core/TextRules.h"

#include <algorithm>
#include <limits>

namespace velmo {

namespace {

constexpr std::int32_t SpecWidth = 100;
constexpr std::int32_t SpecHeight = 28;

constexpr int DefaultIntervalMs = 25;
constexpr DWORD Failed = 0xFFFFFFFF; ///< of `BASS_ChannelGetData`

enum View : std::int32_t
{
    FineSpectrum = 0,
    Bars = 1,
    History = 2,
    Wave = 3,
    Nothing = 4,
};

/// What follows a view by hand, and what is saved then.
struct CycleStep
{
    View next;
    const char* mode;
    const char* style; ///< null: the style that is saved stays
};

constexpr std::array<CycleStep, 5> Cycle{
    {
     {Bars, "Spectrum", "Linear"},
     {History, "Oscilloscope", nullptr},
     {Wave, "Waveform", nullptr},
     {Nothing, "None", nullptr},
     {FineSpectrum, "Spectrum", "Smooth"},
     }
};

/// What the start understands of the settings.
struct SavedView
{
    const char* mode;
    const char* style; ///< null: any
    View view;
};

constexpr std::array<SavedView, 5> SavedViews{
    {
     {"spectrum", "smooth", FineSpectrum},
     {"spectrum", "linear", Bars},
     {"spectrum", "smooth&small", History},
     {"oscilloscope", nullptr, Wave},
     {"none", nullptr, Nothing},
     }
};

} // namespace

Spectrum::Spectrum(const modBass& bass,
                   modINI& settings,
                   forms::wmain& window,
                   const TransportState& state)
    : m_bass(bass)
    , m_settings(settings)
    , m_window(window)
    , m_state(state)
    , m_specBuf(SpecWidth, SpecHeight)
{
    SetVisMode(FineSpectrum);
}

void Spectrum::BuildHeaderAndPalette()
{
    SetSpectrumColor(m_settings.ReadSetting(sections::Visualisation, keys::SpectrumColor, "Green"));
}

void Spectrum::SetSpectrumColor(const std::string& colour)
{
    m_specInfo = MakeBitmapInfo(SpecWidth, SpecHeight, colour);
    Wake();
}

void Spectrum::ReadSettings()
{
    ReadRate();
    ReadView();
}

void Spectrum::DrawVisualisationFrame()
{
    if (m_specInfo.biSize == 0)
        return; // the start has not come so far
    if (m_visMode == Wave) {
        DrawWaveOfChannel();
    } else if (m_bass.BASS_ChannelGetData(
                   m_state.CurrentChannel, m_spectrum.data(), BASS_DATA_FFT2048)
               == Failed) {
        m_spectrum.fill(0);
    }
    if (m_visMode == FineSpectrum || m_visMode == Bars)
        m_specBuf.Clear();
    if (m_visMode == FineSpectrum)
        DrawFineSpectrum(m_spectrum, m_specBuf);
    else if (m_visMode == Bars)
        DrawBars(m_spectrum, m_barScale, m_specBuf);
    else if (m_visMode == History)
        m_specPos = DrawHistory(m_spectrum, m_specPos, m_specBuf);
    if (m_visMode == Nothing)
        m_window.picVisualisation.Cls();
    else
        m_window.picVisualisation.SetDIBits(
            SpecWidth, SpecHeight, m_specBuf.bytes, m_specInfo.bmiColors);
}

void Spectrum::CycleView()
{
    const CycleStep& step = Cycle.at(static_cast<std::size_t>(m_visMode));
    SetVisMode(step.next);
    m_settings.WriteSetting(sections::Visualisation, keys::Mode, step.mode);
    if (step.style != nullptr)
        m_settings.WriteSetting(sections::Visualisation, keys::SpectrumStyle, step.style);
    m_specPos = 0;
    m_window.tmrSpectrum.Interval = step.next == FineSpectrum ? 1 : DefaultIntervalMs;
    m_specBuf.Clear();
}

std::int32_t Spectrum::VisMode() const
{
    return m_visMode;
}

void Spectrum::SetVisMode(std::int32_t mode)
{
    // The cycle lets the fine spectrum tick each millisecond; nobody sees more frames than these.
    constexpr int LeastFrameMs = 10;
    m_visMode = mode;
    m_window.tmrSpectrum.LeastMs = mode == FineSpectrum ? LeastFrameMs : 0;
    Wake();
}

void Spectrum::picVisualisation_MouseUp(const controls::MouseEvent& event)
{
    if (event.button == controls::MouseButton::Left)
        CycleView();
}

void Spectrum::tmrSpectrum_Timer()
{
    constexpr std::int32_t SettlingFrames = SpecWidth; // the history has gone round once
    DrawVisualisationFrame();
    m_stillFrames = IsMoving() ? 0 : m_stillFrames + 1;
    if (m_stillFrames >= SettlingFrames)
        m_window.tmrSpectrum.Resting = true;
}

void Spectrum::tmrScroll_Timer()
{
    if (!m_window.tmrSpectrum.Resting || !m_window.tmrSpectrum.Enabled)
        return;
    if (IsMoving())
        Wake();
    else
        DrawVisualisationFrame();
}

void Spectrum::Wake()
{
    m_stillFrames = 0;
    m_window.tmrSpectrum.Resting = false;
}

bool Spectrum::IsMoving() const
{
    return m_specInfo.biSize != 0 && m_visMode != Nothing
           && m_bass.BASS_ChannelIsActive(m_state.CurrentChannel) == BASS_ACTIVE_PLAYING;
}

void Spectrum::wmain_Resize()
{
    const bool isMinimized = m_window.State.Get() == controls::WindowState::Minimized;
    if (!isMinimized)
        m_window.tmrSpectrum.Enabled = true;
    else if (IsTrue(m_settings.ReadSetting(sections::Visualisation, keys::DisableVisOnMin, "True")))
        m_window.tmrSpectrum.Enabled = false;
}

void Spectrum::DrawWaveOfChannel()
{
    m_specBuf.Clear();
    BASS_CHANNELINFO info = {};
    m_bass.BASS_ChannelGetInfo(m_state.CurrentChannel, &info);
    m_samples.assign(std::size_t{info.chans} * SpecWidth, 0);
    const auto bytes = static_cast<DWORD>(m_samples.size() * sizeof(float));
    m_bass.BASS_ChannelGetData(m_state.CurrentChannel, m_samples.data(), bytes | BASS_DATA_FLOAT);
    DrawWave(m_samples, static_cast<std::int32_t>(info.chans), m_specBuf);
}

void Spectrum::ReadView()
{
    const auto text = [&](const char* key, const char* fallback) {
        return m_settings.ReadSetting(sections::Visualisation, key, fallback);
    };
    const std::string mode = text(keys::Mode, "Spectrum");
    const std::string style = text(keys::SpectrumStyle, "Linear");
    const auto* const saved =
        std::find_if(SavedViews.begin(), SavedViews.end(), [&](const SavedView& view) {
            return EqualsIgnoringCase(mode, view.mode)
                   && (view.style == nullptr || EqualsIgnoringCase(style, view.style));
        });
    SetVisMode(saved == SavedViews.end() ? FineSpectrum : saved->view);
}

void Spectrum::ReadRate()
{
    const double framesPerSecond =
        ParseNumber(m_settings.ReadSetting(sections::Visualisation, keys::RefreshRateFPS, "40"));
    if (framesPerSecond <= 0) {
        m_window.tmrSpectrum.Interval = DefaultIntervalMs;
        return;
    }
    constexpr double Longest = std::numeric_limits<int>::max();
    m_window.tmrSpectrum.Interval =
        static_cast<int>(std::min(Int(1000 / framesPerSecond), Longest));
}

} // namespace velmo
