#pragma once

#include "controls/Controls.h"
#include "controls/Form.h"

#include <array>
#include <cstddef>

namespace velmo::forms {

/// The equalizer's window, 265 by 97 pixels. The tops of its tickers are the only copy of the
/// curve: gains are worked out from them whenever they are needed.
class fX final : public controls::Form
{
public:
    fX();

    static constexpr std::size_t BandCount = 11;

    /// One of each for a band, from the lowest band up. Named from "Bar1" and "Ticker1" on.
    std::array<controls::Image, BandCount> Bar;
    std::array<controls::Image, BandCount> Ticker;
    controls::Label lblFreq; ///< the bands' frequencies
    controls::Image btnState;
    controls::Image btnReset;
    controls::Image btnLoad;
    controls::Image btnSave;
    controls::Image imgCaptionClose;

    /// Whether channels are to have the equalizer; kept as the setting "EQEnabled".
    bool EqualizerOn = false;
};

/// The pictures of `btnState` with the equalizer on and off.
inline constexpr controls::PictureStates StatePicturesOn =
    controls::StatesFrom(controls::PictureList::fx, 5);
inline constexpr controls::PictureStates StatePicturesOff =
    controls::StatesFrom(controls::PictureList::fx, 8);

/// The top of a ticker that changes nothing, in twips: 0 dB.
inline constexpr double FlatTickerTop = 700;

} // namespace velmo::forms
