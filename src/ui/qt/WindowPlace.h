#pragma once

#include "X11Window.h"

#include "controls/Form.h"
#include "controls/PixelGrid.h"
#include "ports/Screens.h"

#include <QPointF>
#include <QTimer>

#include <optional>

class QWidget;

namespace velmo::qt {

/// Keeps a window where its form says, and its form where the user takes the window. The form's
/// numbers are the truth: what the toolkit or a window manager reports of a position is not always
/// so. A window without a frame stands on exact pixels of the screens, whatever their scale; under
/// X it is put there past the toolkit, whose own places are whole logical pixels.
///
/// Under X a move waits to be sent along with those of other windows, so that windows side by side
/// stay so at every moment. User-interface thread.
class WindowPlace
{
public:
    /// Both must outlive this. Takes the form's width and height to whole pixels.
    WindowPlace(controls::Form& form, QWidget& window);

    /// Before the window is shown for the first time, once it has been made.
    void PlaceFirst();
    /// After it was shown: a window manager may have had a place of its own in mind.
    void Assert();
    /// After it was minimised: where no window manager takes it off the screen, this does.
    void LeaveScreen();
    /// Moves the window if the form's place has changed since the last call.
    void Sync();
    /// What `Sync` has left to be sent to the X server; nothing more at the next call.
    std::optional<X11Move> TakeMove();
    bool HasMove() const { return m_isMoveLeft; }

    /// A button was pressed there, in logical pixels of the desktop and of the window; a drag that
    /// begins now is held at that point.
    void Pressed(QPointF global, QPointF local);
    /// From now on until `EndDrag` the window goes with the pointer, or where the form's `Moving`
    /// lets it go.
    void BeginDrag();
    /// The pointer has moved; false if no drag is on.
    bool Drag(QPointF pointer);
    void EndDrag();
    bool IsDragging() const { return m_isDragging; }

    /// A drag of this window or of another one begins: what has to move with it is moved past the
    /// window manager.
    void TakeFromManager();
    /// The drag has ended: what the window manager hasn't been told is left to be sent.
    void GiveToManager();

    /// The window system says that the window has been moved. Believed once it has come to rest and
    /// has been found in the same place twice: when a screen goes, a window manager tears blocks
    /// apart that are about to be brought back.
    void Moved();

private:
    bool IsExact() const;
    controls::PixelGrid Grid() const;
    ports::ScreenPoint Wanted() const;
    ports::ScreenPoint Found() const;
    void TakeFound();
    void Centre();
    void PutOnX11();
    X11Move NextMove();
    ports::ScreenPoint PointerAt(QPointF global) const;

    controls::Form& m_form;
    QWidget& m_window;
    ports::ScreenPoint m_shown;
    ports::ScreenPoint m_sent;                ///< what the X server was asked for last
    std::optional<ports::ScreenPoint> m_seen; ///< where it was found of late, not yet believed
    bool m_isMoveLeft = false;
    X11Target m_frame; ///< during a drag, where there's one that may be moved
    bool m_isManagerBehind = false;
    bool m_isDragging = false;
    ports::ScreenPoint m_pressed; ///< of events: where the pointer is by now may be far ahead
    ports::ScreenRect m_start;    ///< the window at the drag's start
    QTimer m_rest;                ///< runs while the window may still be moved by others
};

} // namespace velmo::qt
