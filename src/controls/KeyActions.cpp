#include "KeyActions.h"

#include "EventEntry.h"

#include <algorithm>
#include <cmath>

namespace velmo::controls {

void Press(Control& control)
{
    const MouseEvent event{
        .button = MouseButton::Left, .x = control.Width / 2, .y = control.Height / 2};
    CallSlot(control.MouseDown, event);
    CallSlot(control.MouseUp, event);
    CallSlot(control.Click);
}

void SlideTo(const Image& image, double share)
{
    Image* const knob = image.Knob();
    if (knob == nullptr)
        return;
    const auto place = [&]() -> double { return knob->IsUpright() ? knob->Top : knob->Left; };
    const double before = place();
    const double way = (std::clamp(share, 0.0, 1.0) - knob->AccessibleValue()) * knob->SlideRange();
    const double distance = std::round(knob->IsUpright() ? -way : way);
    if (distance == 0)
        return;
    // Whole twips: handlers round what they get.
    MouseEvent event{.button = MouseButton::Left,
                     .x = std::floor(knob->Width / 2),
                     .y = std::floor(knob->Height / 2)};
    CallSlot(knob->MouseDown, event);
    double& moving = knob->IsUpright() ? event.y : event.x;
    moving += distance;
    CallSlot(knob->MouseMove, event);
    if (place() == before) {
        moving -= std::copysign(1.0, distance);
        CallSlot(knob->MouseMove, event);
    }
    // The knob has moved under the pointer.
    moving -= place() - before;
    CallSlot(knob->MouseUp, event);
}

} // namespace velmo::controls
