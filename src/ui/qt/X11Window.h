#pragma once

#include "ports/Screens.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

class QWidget;

namespace velmo::qt {

/// What the toolkit can't do for a window on an X server: places and outlines by the pixel of the
/// screen, and several windows moved in one go. Requests go through the toolkit's own connection,
/// in order with its own. User-interface thread; the windows must have been made.

/// Whether the windows of this process are an X server's.
bool IsX11();

/// A window of the server's to be moved.
struct X11Target
{
    std::uint32_t id = 0;
    /// Whether it's a frame whose moves would go to the window manager first.
    bool isRedirectedFrame = false;
};

/// The frame in which a window manager holds the window, if moving it moves the window and shows:
/// it's as large as the window, and no compositing manager draws the screen from places of its own.
/// Waits for answers. Its id is 0 if there's none.
X11Target FrameOnX11(const QWidget& window);

/// A window's way to another place.
struct X11Move
{
    X11Target target;
    ports::ScreenRect from;
    ports::ScreenPoint to;
};

/// Asks for the windows to stand there, all at once: nobody can look at the screen in between, as
/// long as no window manager takes the requests for itself; one that does gets them together. Where
/// it can be, none is put over one that is still to leave: what it covers has to be painted anew.
void MoveX11(std::vector<X11Move> moves);

/// Where the server has it now; waits for the answer. Nothing if it doesn't tell.
std::optional<ports::ScreenPoint> PlaceOnX11(const QWidget& window);

/// Where the pointer is now; waits for the answer. Nothing if the server doesn't tell.
std::optional<ports::ScreenPoint> PointerOnX11();

/// Takes the window off the screen if there's no window manager to do it. Waits for an answer.
void UnmapUnmanagedX11(const QWidget& window);

/// The parts of the window that are seen and take the mouse; ordered by rows. All of it if there
/// are none.
void ShapeX11(const QWidget& window, std::span<const ports::ScreenRect> parts);

} // namespace velmo::qt
