#pragma once

#include "Controls.h"

namespace velmo::controls {

/// What keys and screen readers do in place of the mouse. Handlers see the mouse events that a hand
/// would have caused, through the event entry. User-interface thread.

/// Presses and releases the left button in the middle of the control.
void Press(Control& control);

/// How much of its way the knob of a slider goes at one step of a key: a twentieth, which is one dB
/// of a band.
inline constexpr double SliderStep = 0.05;

/// Drags the knob of the slider that `image` belongs to until it stands at `share` of its way, 0 to
/// 1 as `AccessibleValue` counts; held to that range. Goes to the end but a twip if handlers refuse
/// the very end. Nothing for an image of no slider.
void SlideTo(const Image& image, double share);

} // namespace velmo::controls
