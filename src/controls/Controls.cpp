#include "Controls.h"

#include <algorithm>

namespace velmo::controls {

Label::Label(Form& form, std::string name, Bounds bounds, std::string caption)
    : Control(form, ControlKind::Label, std::move(name), bounds)
    , Caption(*this, std::move(caption))
{}

Image::Image(Form& form, std::string name, Bounds bounds)
    : Control(form, ControlKind::Image, std::move(name), bounds)
{}

void Image::TakeStates(PictureList list, std::uint8_t first)
{
    TakeStates(StatesFrom(list, first));
}

void Image::TakeStates(const PictureStates& states)
{
    States = states;
    TabStop = true;
    ShowNormal();
}

void Image::SlideOn(Image& track)
{
    m_track = &track;
    m_knob = this;
    track.m_track = &track;
    track.m_knob = this;
}

bool Image::IsUpright() const
{
    return m_track->Height > m_track->Width;
}

double Image::SlideRange() const
{
    return IsUpright() ? m_track->Height - m_knob->Height : m_track->Width - m_knob->Width;
}

double Image::AccessibleValue() const
{
    if (m_track == nullptr)
        return -1.0;
    const double range = SlideRange();
    if (range <= 0)
        return 0.0;
    const double way =
        IsUpright() ? range - (m_knob->Top - m_track->Top) : m_knob->Left - m_track->Left;
    return std::clamp(way / range, 0.0, 1.0);
}

TextBox::TextBox(Form& form, std::string name, Bounds bounds)
    : Control(form, ControlKind::TextBox, std::move(name), bounds)
{}

Timer::Timer(Form& form, std::string name, int intervalMs, bool enabled, TimerAccuracy accuracy)
    : Control(form, ControlKind::Timer, std::move(name), {})
    , Interval(*this, intervalMs)
    , Accuracy(accuracy)
{
    Enabled = enabled;
}

} // namespace velmo::controls
