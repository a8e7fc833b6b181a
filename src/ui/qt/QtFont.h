#pragma once

#include "controls/Controls.h"

#include <QColor>
#include <QFont>

namespace velmo::qt {

/// The font asked for, with the system's narrow sans behind it. Its size is fixed to the design's
/// 96 pixels an inch, because the windows do not grow with the desktop's font size.
QFont ToQFont(const controls::Font& font);

/// 0x00BBGGRR as a colour.
QColor ToQColor(controls::Colour colour);

} // namespace velmo::qt
