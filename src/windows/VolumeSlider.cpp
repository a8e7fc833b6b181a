#include "VolumeSlider.h"

#include "core/NumberText.h"
#include "core/SettingsKeys.h"

#include <algorithm>
#include <cmath>

namespace velmo {

namespace {

constexpr double PerCent = 100;

} // namespace

VolumeSlider::VolumeSlider(forms::wmain& form, const modBass& bass, modINI& settings)
    : m_form(form)
    , m_bass(bass)
    , m_settings(settings)
{}

void VolumeSlider::Restore()
{
    m_dragging = false;
    const double offset = ParseNumber(m_settings.ReadSetting(sections::RTM, keys::Volume, "1215"));
    m_form.imgVolumeTicker.Left =
        offset + m_form.imgVolumeBar.Left - m_form.imgVolumeTicker.Width / 2;
    SetVolume(offset);
    // Plain here; behind a move the number has a blank before it.
    ShowPercent(PlainNumber(Int(offset / Step()) - 5));
}

void VolumeSlider::imgVolumeBar_MouseDown(const controls::MouseEvent& event)
{
    if (event.button != controls::MouseButton::Left)
        return;
    MoveTo(m_form.imgVolumeBar.Left + event.x - m_form.imgVolumeTicker.Width / 2);
    Write();
}

void VolumeSlider::imgVolumeTicker_MouseDown(const controls::MouseEvent& event)
{
    if (event.button != controls::MouseButton::Left)
        return;
    m_dragging = true;
    m_dragStart = RoundHalfEven(event.x);
}

void VolumeSlider::imgVolumeTicker_MouseMove(const controls::MouseEvent& event)
{
    if (m_dragging)
        MoveTo(m_form.imgVolumeTicker.Left - m_dragStart + RoundHalfEven(event.x));
}

void VolumeSlider::imgVolumeTicker_MouseUp(const controls::MouseEvent& event)
{
    if (event.button != controls::MouseButton::Left)
        return;
    m_dragging = false;
    Write();
}

double VolumeSlider::Range() const
{
    return m_form.imgVolumeBar.Width - m_form.imgVolumeTicker.Width;
}

/// Twips to the per cent.
double VolumeSlider::Step() const
{
    return Range() / PerCent;
}

/// From the start of the bar to the middle of the knob.
double VolumeSlider::Offset() const
{
    return m_form.imgVolumeTicker.Width / 2 + m_form.imgVolumeTicker.Left
           - m_form.imgVolumeBar.Left;
}

/// Held to the bar; the volume follows.
void VolumeSlider::MoveTo(double left)
{
    const double start = m_form.imgVolumeBar.Left;
    m_form.imgVolumeTicker.Left = std::clamp(left, start, start + Range());
    SetVolume(RoundHalfEven(Offset()));
    // Single precision: two of the hundred steps show one less than they are.
    constexpr float PerCentOfFloat = 100;
    const float shown = std::floor(m_bass.BASS_GetVolume() * PerCentOfFloat);
    ShowPercent(BlankedNumber(static_cast<double>(shown)));
}

/// The knob is half a knob, which is more than 5 steps, from the end of its way.
void VolumeSlider::SetVolume(double offset)
{
    const double percent = Int(offset / Step()) - 5;
    m_bass.BASS_SetVolume(static_cast<float>(percent / PerCent));
}

void VolumeSlider::ShowPercent(const std::string& number)
{
    m_form.imgVolumeTicker.ToolTipText = "Volume " + number + "%";
    m_form.imgVolumeBar.ToolTipText = "Volume " + number + "%";
}

void VolumeSlider::Write()
{
    m_settings.WriteSetting(sections::RTM, keys::Volume, PlainNumber(Offset()));
}

} // namespace velmo
