#pragma once

#include <QWidget>

namespace velmo::qt {

/// Whether a widget stands in a window that the window manager frames. Such windows look as the
/// desktop's other dialogs do, in its colours; the frameless ones are painted by the program.
inline bool UsesDesktopStyle(const QWidget& widget)
{
    return !widget.window()->windowFlags().testFlag(Qt::FramelessWindowHint);
}

} // namespace velmo::qt
