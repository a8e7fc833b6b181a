#pragma once

#include "bass/modBass.h"
#include "forms/fX.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace velmo {

/// The equalizer as an effect on channels. Nothing that the library answers is looked at: on a dead
/// channel, or with a dead handle, its calls do nothing, and the next `ApplyEqualizer` comes right
/// because it works everything out from the tickers. User-interface thread only.
class modFXFunctions final
{
public:
    modFXFunctions(const modBass& bass, forms::fX& window);

    /// Puts a new effect with the tickers' gains on the channel, whether the equalizer is on or
    /// not, and gives its handle. Sets `EqualizerBandValue` and the tool tips of bars and tickers.
    /// Effects that the channel has already stay on it.
    HFX ApplyEqualizer(DWORD channel);

    /// `ApplyEqualizer` on a channel that starts, if the equalizer is on; keeps the handle.
    void ApplyIfOn(DWORD channel);

    /// Takes the effect that was made last off the channel, if it is there.
    void RemoveEqualizer(DWORD channel) const;

    /// The user has moved a ticker, 0 to 10: sets its step, its tool tips and its bar's, and the
    /// band of the effect that was made last, whether the equalizer is on or not.
    void FollowTicker(std::size_t band);

    /// Sets one band, 0 to 10, of the effect to 10 - `step` dB. Step 0 is the top of the bar, 20
    /// its bottom.
    void SetEqualizerBand(HFX effect, std::int32_t band, std::int32_t step) const;

    /// The effect that was made last. It may have ended since with its channel.
    HFX EqualizerHandle = 0;
    /// The bands' steps as they were last worked out.
    std::array<std::int32_t, forms::fX::BandCount> EqualizerBandValue{};

private:
    void MakeFlatBands(HFX effect) const;
    void ReadTickers();
    void ShowStep(std::size_t band, std::int32_t step);

    const modBass& m_bass;
    forms::fX& m_window;
};

} // namespace velmo
