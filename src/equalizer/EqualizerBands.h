#pragma once

#include "modFXFunctions.h"

#include "controls/PictureRow.h"
#include "forms/fX.h"

#include <cstddef>
#include <cstdint>

namespace velmo {

/// The bars of the equalizer's window and their tickers, one handler for all eleven bands. Any
/// button of the mouse moves them. User-interface thread only.
class EqualizerBands final
{
public:
    /// Sets the mouse slots of bars and tickers, which must not be used after the end of this.
    EqualizerBands(forms::fX& form, modFXFunctions& equalizer);
    EqualizerBands(const EqualizerBands&) = delete;
    EqualizerBands& operator=(const EqualizerBands&) = delete;
    ~EqualizerBands() = default;

    /// Moves every ticker to 0 dB, with "0" as its tool tip. The bars keep theirs; no effect
    /// changes.
    void MakeFlat();

    /// Shows the normal picture of every bar and ticker.
    void ShowNormal() const;

private:
    void BindTicker(std::size_t band);
    void BindBar(std::size_t band);
    void Drag(std::size_t band, double y);
    void JumpTo(std::size_t band, double y);
    double LowestTop(std::size_t band) const;

    forms::fX& m_form;
    modFXFunctions& m_equalizer;
    controls::PictureRow m_bars;
    controls::PictureRow m_tickers;
    bool m_tickerDragging = false;
    std::int32_t m_tickerDragStart = 0; ///< twips from the ticker's top
};

} // namespace velmo
