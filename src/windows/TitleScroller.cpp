#include "TitleScroller.h"

#include "core/SettingsKeys.h"
#include "core/TextRules.h"

namespace velmo {

TitleScroller::TitleScroller(forms::wmain& form, modINI& settings, const TransportState& state)
    : m_form(form)
    , m_settings(settings)
    , m_state(state)
{}

void TitleScroller::tmrScroll_Timer()
{
    m_form.lblSongName.Caption = Rotated(m_form.lblSongName.Caption);
    const bool scrolls =
        IsTrue(m_settings.ReadSetting(sections::Display, keys::ScrollTitle, "True"));
    m_form.tmrSpectrum.Enabled = m_form.State.Get() != controls::WindowState::Minimized;
    m_form.Caption = scrolls ? m_form.lblSongName.Caption.Get() : m_state.WindowTitle;
}

std::string Rotated(const std::string& text)
{
    const std::string first = FirstCharacters(text, 1);
    return text.substr(first.size()) + first;
}

} // namespace velmo
