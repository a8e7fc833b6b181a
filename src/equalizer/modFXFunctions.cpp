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

/// The step at which a ticker stands on its bar, by the ticker's middle.
std::int32_t StepOf(const Image& ticker, const Image& bar)
{
    const double middle = ticker.Height / 2 + ticker.Top - bar.Top;
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

void modFXFunctions::SetEqualizerBand(HFX effect, std::int32_t band, std::int32_t step) const
{
    BASS_BFX_PEAKEQ record = {};
    record.lBand = band;
    m_bass.BASS_FXGetParameters(effect, &record); // centre and bandwidth stay as they are
    record.fGain = static_cast<float>(TopGainDb - step);
    m_bass.BASS_FXSetParameters(effect, &record);
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
        Image& ticker = m_window.Ticker[band];
        Image& bar = m_window.Bar[band];
        EqualizerBandValue[band] = StepOf(ticker, bar);
        const std::string gain = BlankedNumber(TopGainDb - EqualizerBandValue[band]);
        ticker.ToolTipText = gain;
        bar.ToolTipText = gain;
    }
}

} // namespace velmo
