#pragma once

#include "controls/Form.h"

#include <QPoint>

class QWidget;

namespace velmo::qt {

/// Keeps a window where its form says, and its form where the user takes the window. The form's
/// numbers are the truth: what a window manager reports of a position is not always so.
/// User-interface thread.
class WindowPlace
{
public:
    /// Both must outlive this.
    WindowPlace(controls::Form& form, QWidget& window);

    /// Before the window is shown for the first time.
    void PlaceFirst();
    /// Moves the window if the form's place has changed since the last call.
    void Sync();

    /// A button was pressed there, in global pixels; a drag that begins now is held at that point.
    void Pressed(QPoint pointer);
    /// From now on until `EndDrag` the window goes with the pointer.
    void BeginDrag();
    /// The pointer has moved; false if no drag is on.
    bool Drag(QPoint pointer);
    void EndDrag();

    /// The window system says that the window has been moved.
    void Moved(QPoint reported);

private:
    controls::Form& m_form;
    QWidget& m_window;
    QPoint m_shown;
    bool m_isDragging = false;
    QPoint m_pressed; ///< of events: where the pointer is by now may be far ahead of them
    QPoint m_grip;    ///< `m_pressed` less the window's place at the drag's start
};

} // namespace velmo::qt
