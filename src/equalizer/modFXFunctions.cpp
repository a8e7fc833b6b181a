#include "modFXFunctions.h"

#include "bass_fx.h"

#include "core/NumberText.h"

namespace velmo {

namespace {

using controls::Image;

constexpr std::array<float, forms::fX::BandCount> CentresHz{
    60, 170, 310, 600, 1000, 3000, 6000, 9000, 12000, 14000, 16000};

/// Gain in dB of step 0; each step takes 1 dB off.
constexpr std::int32_t TopGainDb = 10;

/// From the top of a bar to the middle of its ticker, in twips.
double MiddleOf(const Image& ticker, const Image& bar)
{
    return ticker.Height / 2 + ticker.Top - bar.Top;
}

/// The step of a ticker whose middle stands there.
std::int32_t StepAt(double middle, const Image& ticker, const Image& bar)
{
    const double step = (bar.Height - ticker.Height) / 20;
    // Half a ticker is always in it: that is two steps and a bit.
    return static_cast<std::int32_t>(Int(middle / step)) - 2;
}

} // namespace

modFXFunctions::modFXFunctions(const modBass& bass, forms::fX& window)
    : m_bass(bass)
    , m_window(window)
{}

HFX modFXFunctions::ApplyEqualizer(DWORD channel)
{
    float unused = 0;
    m_bass.BASS_ChannelGetAttribute(channel, BASS_ATTRIB_FREQ, &unused);
    const HFX effect = m_bass.BASS_ChannelSetFX(channel, BASS_FX_BFX_PEAKEQ, 0);
    MakeFlatBands(effect);
    ReadTickers();
    for (std::size_t band = 0; band < EqualizerBandValue.size(); ++band)
        SetEqualizerBand(effect, static_cast<std::int32_t>(band), EqualizerBandValue[band]);
    return effect;
}

void modFXFunctions::ApplyIfOn(DWORD channel)
{
    if (m_window.EqualizerOn)
        EqualizerHandle = ApplyEqualizer(channel);
}

void modFXFunctions::RemoveEqualizer(DWORD channel) const
{
    m_bass.BASS_ChannelRemoveFX(channel, EqualizerHandle);
}

void modFXFunctions::SetEqualizerBand(HFX effect, std::int32_t band, std::int32_t step) const
{
    BASS_BFX_PEAKEQ record = {};
    record.lBand = band;
    m_bass.BASS_FXGetParameters(effect, &record); // centre and bandwidth stay as they are
    record.fGain = static_cast<float>(TopGainDb - step);
    m_bass.BASS_FXSetParameters(effect, &record);
}

void modFXFunctions::FollowTicker(std::size_t band)
{
    const Image& ticker = m_window.Ticker[band];
    const Image& bar = m_window.Bar[band];
    // Kept: the middle is rounded here and not in `ReadTickers`, so that the next track may play
    // one dB more than the tool tip tells.
    ShowStep(band, StepAt(RoundHalfEven(MiddleOf(ticker, bar)), ticker, bar));
    SetEqualizerBand(EqualizerHandle, static_cast<std::int32_t>(band), EqualizerBandValue[band]);
}

void modFXFunctions::MakeFlatBands(HFX effect) const
{
    constexpr float Octaves = 2.5F;
    BASS_BFX_PEAKEQ record = {.lBand = 0,
                              .fBandwidth = Octaves,
                              .fQ = 0,
                              .fCenter = 0,
                              .fGain = 0,
                              .lChannel = BASS_BFX_CHANALL};
    for (std::size_t band = 0; band < CentresHz.size(); ++band) {
        record.lBand = static_cast<int>(band);
        record.fCenter = CentresHz[band];
        m_bass.BASS_FXSetParameters(effect, &record);
    }
}

void modFXFunctions::ReadTickers()
{
    for (std::size_t band = 0; band < EqualizerBandValue.size(); ++band) {
        const Image& ticker = m_window.Ticker[band];
        const Image& bar = m_window.Bar[band];
        ShowStep(band, StepAt(MiddleOf(ticker, bar), ticker, bar));
    }
}

void modFXFunctions::ShowStep(std::size_t band, std::int32_t step)
{
    EqualizerBandValue[band] = step;
    const std::string gain = BlankedNumber(TopGainDb - step);
    m_window.Ticker[band].ToolTipText = gain;
    m_window.Bar[band].ToolTipText = gain;
}

} // namespace velmo
