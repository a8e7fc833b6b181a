#pragma once

#include "ControlWidget.h"

#include "controls/Control.h"
#include "controls/Form.h"

#include <Qt>

namespace velmo::qt {

/// The widget of a control, a child of `window`, which owns it; null for one that cannot be seen.
ControlWidget* MakeWidget(controls::Control& control, ControlHost& host, QWidget& window);

bool IsFrameless(const controls::Form& form);

/// What the window system is to know of the form's window when it is made.
Qt::WindowFlags FlagsOf(const controls::Form& form);

} // namespace velmo::qt
