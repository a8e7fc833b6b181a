#include "fX.h"

#include "core/CallIfSet.h"
#include "core/SettingsKeys.h"
#include "core/TextRules.h"

#include <utility>

namespace velmo {

namespace {

using controls::MouseButton;
using controls::MouseEvent;

/// Kept: the place that closes the window is wider and higher than its picture, in twips.
constexpr double CloseWidth = 285;
constexpr double CloseHeight = 210;

constexpr bool IsInsideClose(const MouseEvent& event)
{
    return event.x >= 0 && event.x <= CloseWidth && event.y >= 0 && event.y <= CloseHeight;
}

} // namespace

fX::fX(forms::fX& form, modFXFunctions& equalizer, EqualizerFiles& curves, modINI& settings)
    : m_form(form)
    , m_equalizer(equalizer)
    , m_curves(curves)
    , m_settings(settings)
    , m_bands(form, equalizer)
    , m_keys({&form.btnState, &form.btnReset, &form.btnLoad, &form.btnSave})
    , m_caption({&form.imgCaptionClose})
{
    BindKeys();
    BindWindow();
}

void fX::Load()
{
    if (std::exchange(m_form.Loaded, true))
        return;
    m_form.Enabled = true;
    CallIfSet(Calls.ShapeAndStick);
    m_bands.MakeFlat();
    for (controls::Image& bar : m_form.Bar)
        bar.ToolTipText = "0";
    m_form.AlwaysOnTop =
        IsTrue(m_settings.ReadSetting(sections::Options, keys::AlwaysOnTop, "false"));
}

void fX::ReadState()
{
    SwitchTo(IsTrue(m_settings.ReadSetting(sections::DspEffects, keys::EQEnabled, "True")));
}

void fX::BindKeys()
{
    const auto bind = [this](controls::Image& key, std::function<void()> act) {
        m_keys.Bind(key,
                    {.pressedBy = controls::PressedBy::AnyButton,
                     .act = [act = std::move(act)](const MouseEvent& /*event*/) { act(); }});
    };
    bind(m_form.btnState, [this] { btnState_MouseUp(); });
    bind(m_form.btnReset, [this] { btnReset_MouseUp(); });
    bind(m_form.btnLoad, [this] { m_curves.LoadEqualizerFile(Channel()); });
    bind(m_form.btnSave, [this] { m_curves.SaveEqualizerFile(); });
}

void fX::BindWindow()
{
    m_caption.Bind(m_form.imgCaptionClose,
                   {.pressedBy = controls::PressedBy::AnyButton,
                    .released = m_form.imgCaptionClose.States.hover,
                    .act = [this](const MouseEvent& event) { imgCaptionClose_MouseUp(event); }});
    m_form.MouseMove = [this](const MouseEvent& /*event*/) { ShowNormal(); };
    m_form.MouseDown = [this](const MouseEvent& event) {
        if (event.button == MouseButton::Left)
            CallIfSet(m_form.BeginDrag);
    };
    m_form.QueryClose = [this] { CallIfSet(Calls.Hide); };
}

void fX::btnState_MouseUp()
{
    SwitchTo(!m_form.EqualizerOn);
    if (m_form.EqualizerOn)
        m_equalizer.ApplyIfOn(Channel());
    else
        m_equalizer.RemoveEqualizer(Channel());
    m_settings.WriteSetting(
        sections::DspEffects, keys::EQEnabled, m_form.EqualizerOn ? "True" : "False");
}

void fX::btnReset_MouseUp()
{
    constexpr std::size_t ForgottenBar = 2;
    m_equalizer.RemoveEqualizer(Channel());
    m_bands.MakeFlat();
    // Kept: the third bar keeps its tool tip until the equalizer is applied again.
    for (std::size_t band = 0; band < forms::fX::BandCount; ++band)
        if (band != ForgottenBar)
            m_form.Bar[band].ToolTipText = "0";
    m_equalizer.ApplyIfOn(Channel());
}

void fX::imgCaptionClose_MouseUp(const MouseEvent& event) const
{
    if (event.button == MouseButton::Left && IsInsideClose(event))
        CallIfSet(Calls.Hide);
}

void fX::SwitchTo(bool on)
{
    m_form.EqualizerOn = on;
    m_form.btnState.TakeStates(on ? forms::StatePicturesOn : forms::StatePicturesOff);
}

void fX::ShowNormal() const
{
    m_bands.ShowNormal();
    m_keys.ShowNormal();
    m_caption.ShowNormal();
}

DWORD fX::Channel() const
{
    return Calls.CurrentChannel ? Calls.CurrentChannel() : 0;
}

} // namespace velmo
