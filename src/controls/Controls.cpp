#include "Controls.h"

#include <algorithm>

namespace velmo::controls {

Label::Label(Form& form, std::string name, Bounds bounds, std::string caption)
    : Control(form, ControlKind::Label, std::move(name), bounds)
    , Caption(*this, std::move(caption))
{}

Image::Image(Form& form, std::string name, Bounds bounds, ImageShape shape)
    : Control(form, ControlKind::Image, std::move(name), bounds)
    , Shape(shape)
{}

void Image::SlideOn(Image& track)
{
    m_track = &track;
    m_knob = this;
    track.m_track = &track;
    track.m_knob = this;
}

double Image::AccessibleValue() const
{
    if (m_track == nullptr)
        return -1.0;
    const double range = m_track->Width - m_knob->Width;
    if (range <= 0)
        return 0.0;
    return std::clamp((m_knob->Left - m_track->Left) / range, 0.0, 1.0);
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
