#include "fX.h"

#include "core/SettingsKeys.h"
#include "core/TextRules.h"

#include <utility>

namespace velmo {

fX::fX(forms::fX& form, modFXFunctions& equalizer, modINI& settings)
    : m_form(form)
    , m_equalizer(equalizer)
    , m_settings(settings)
{}

void fX::Load()
{
    if (std::exchange(m_form.Loaded, true))
        return;
    m_form.Enabled = true;
    constexpr std::int32_t FlatStep = 10;
    m_equalizer.EqualizerBandValue.fill(FlatStep);
    for (std::size_t band = 0; band < forms::fX::BandCount; ++band) {
        m_form.Ticker[band].Top = forms::FlatTickerTop;
        m_form.Ticker[band].ToolTipText = "0";
        m_form.Bar[band].ToolTipText = "0";
    }
}

void fX::ReadState()
{
    m_form.EqualizerOn =
        IsTrue(m_settings.ReadSetting(sections::DspEffects, keys::EQEnabled, "True"));
}

} // namespace velmo
