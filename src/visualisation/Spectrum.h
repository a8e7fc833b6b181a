#pragma once

#include "SpectrumPalette.h"
#include "SpectrumViews.h"

#include "bass/modBass.h"
#include "core/modINI.h"
#include "forms/wmain.h"
#include "sound/TransportState.h"

#include <array>
#include <string>
#include <vector>

namespace velmo {

/// The live picture of the sound in `picVisualisation`: one frame of the current channel at each
/// tick of `tmrSpectrum`, in one of five views. User-interface thread only.
class Spectrum final
{
public:
    Spectrum(const modBass& bass,
             modINI& settings,
             forms::wmain& window,
             const TransportState& state);

    /// The start's step: sizes, header and palette, by the setting "SpectrumColor". Before it no
    /// frame is drawn and the library is not called.
    void BuildHeaderAndPalette();

    /// Header and palette anew for a colour; seen with the next frame. The setting is the caller's.
    void SetSpectrumColor(const std::string& colour);

    /// The main window's load: view and rate as the settings say.
    /// Kept: it does not know all that `CycleView` writes. What that saves for view 2 is read as
    /// view 3, and what it saves for view 3 as view 0.
    void ReadSettings();

    /// Draws one frame and hands it to the box; in view 4 the box is cleared instead. Without a
    /// channel the frame is empty.
    void DrawVisualisationFrame();

    /// The next view, which is saved. Starts with an empty picture.
    void CycleView();

    /// 0 fine spectrum, 1 bars, 2 history, 3 wave, 4 nothing.
    std::int32_t VisMode() const;
    void SetVisMode(std::int32_t mode);

    void picVisualisation_MouseUp(const controls::MouseEvent& event);
    /// Draws a frame. When no sound has moved the picture for so long that all of it is still, the
    /// timer goes to rest.
    void tmrSpectrum_Timer();
    /// The title has moved on. While the timer rests this looks for what may have changed without
    /// being told: a seek in a pause, a channel that plays again after a gap.
    void tmrScroll_Timer();
    /// Ends the timer's rest: there may be something to draw.
    void Wake();
    /// The main window was minimised, or is back.
    void wmain_Resize();

private:
    /// One value more than the library gives, so that drawing may start at the second.
    static constexpr std::size_t SpectrumSize = 1025;

    bool IsMoving() const;
    void DrawWaveOfChannel();
    void ReadView();
    void ReadRate();

    const modBass& m_bass;
    modINI& m_settings;
    forms::wmain& m_window;
    const TransportState& m_state;

    std::int32_t m_visMode = 0;
    std::int32_t m_stillFrames = 0; ///< ticks in a row without sound
    std::int32_t m_specPos = 0;     ///< column that the history writes next
    SpectrumBuffer m_specBuf;
    BarScale m_barScale;
    BitmapInfo m_specInfo;
    std::array<float, SpectrumSize> m_spectrum{};
    std::vector<float> m_samples;
};

} // namespace velmo
