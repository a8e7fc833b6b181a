#pragma once

#include "ports/Screens.h"

#include <span>

namespace velmo {

/// The rules by which windows stick to each other: on rectangles alone, in any unit. The distance
/// `snapWidth` itself is too far.

/// Whether two rectangles stand beside each other: no gap between them in either direction, and a
/// common line of edges. Kept: two that share a corner alone touch, and so do two that overlap with
/// an edge in line; two that merely overlap don't.
bool RectsTouch(const ports::ScreenRect& a, const ports::ScreenRect& b);

/// How far a moved rectangle is to be shifted.
struct SnapShift
{
    int dx = 0;
    int dy = 0;
};

/// Sets `shift` so that an edge of `moved` comes to an edge of `target`, in each direction that has
/// one near; leaves it alone in the others. So the last of several targets wins.
void SnapTest(const ports::ScreenRect& moved,
              const ports::ScreenRect& target,
              int snapWidth,
              SnapShift& shift);

/// The edge or corner by which a window is sized.
enum class SizingEdge
{
    Left = 1,
    Right = 2,
    Top = 3,
    TopLeft = 4,
    TopRight = 5,
    Bottom = 6,
    BottomLeft = 7,
    BottomRight = 8,
};

/// Has the sized edges of `sized` jump to those of the targets. All compare with where the edges
/// came in, so that one target can't draw the window on to the next.
void SnapSizing(ports::ScreenRect& sized,
                SizingEdge edge,
                std::span<const ports::ScreenRect> targets,
                int snapWidth);

} // namespace velmo
