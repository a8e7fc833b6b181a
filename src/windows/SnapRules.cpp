#include "SnapRules.h"

#include <algorithm>
#include <cstdlib>

namespace velmo {

namespace {

using ports::ScreenRect;

bool IsNear(int a, int b, int snapWidth)
{
    return std::abs(a - b) < snapWidth;
}

bool MeetInHeight(const ScreenRect& a, const ScreenRect& b, int snapWidth)
{
    return a.top < b.bottom + snapWidth && a.bottom > b.top - snapWidth;
}

bool MeetInWidth(const ScreenRect& a, const ScreenRect& b, int snapWidth)
{
    return a.left < b.right + snapWidth && a.right > b.left - snapWidth;
}

/// One direction of `SnapTest`: the near edges first, each against the target's near and far edge.
void SnapSpan(int near, int far, int targetNear, int targetFar, int snapWidth, int& shift)
{
    for (const int edge : {near, far}) {
        for (const int target : {targetNear, targetFar}) {
            if (IsNear(edge, target, snapWidth)) {
                shift = target - edge;
                return;
            }
        }
    }
}

void SnapEdge(int& edge, int incoming, int targetNear, int targetFar, int snapWidth)
{
    if (IsNear(incoming, targetNear, snapWidth))
        edge = targetNear;
    else if (IsNear(incoming, targetFar, snapWidth))
        edge = targetFar;
}

bool IsOneOf(SizingEdge edge, SizingEdge a, SizingEdge b, SizingEdge c)
{
    return edge == a || edge == b || edge == c;
}

} // namespace

bool RectsTouch(const ScreenRect& a, const ScreenRect& b)
{
    const int width = std::max(a.right, b.right) - std::min(a.left, b.left);
    const int height = std::max(a.bottom, b.bottom) - std::min(a.top, b.top);
    if (width > a.Width() + b.Width() || height > a.Height() + b.Height())
        return false;
    return a.left == b.left || a.left == b.right || a.right == b.left || a.right == b.right
           || a.top == b.top || a.top == b.bottom || a.bottom == b.top || a.bottom == b.bottom;
}

void SnapTest(const ScreenRect& moved, const ScreenRect& target, int snapWidth, SnapShift& shift)
{
    if (MeetInHeight(moved, target, snapWidth))
        SnapSpan(moved.left, moved.right, target.left, target.right, snapWidth, shift.dx);
    if (MeetInWidth(moved, target, snapWidth))
        SnapSpan(moved.top, moved.bottom, target.top, target.bottom, snapWidth, shift.dy);
}

void SnapSizing(ScreenRect& sized,
                SizingEdge edge,
                std::span<const ScreenRect> targets,
                int snapWidth)
{
    using enum SizingEdge;
    const ScreenRect incoming = sized;
    for (const ScreenRect& target : targets) {
        if (MeetInHeight(sized, target, snapWidth)) {
            if (IsOneOf(edge, Left, TopLeft, BottomLeft))
                SnapEdge(sized.left, incoming.left, target.left, target.right, snapWidth);
            else if (IsOneOf(edge, Right, TopRight, BottomRight))
                SnapEdge(sized.right, incoming.right, target.left, target.right, snapWidth);
        }
        if (MeetInWidth(sized, target, snapWidth)) {
            if (IsOneOf(edge, Top, TopLeft, TopRight))
                SnapEdge(sized.top, incoming.top, target.top, target.bottom, snapWidth);
            else if (IsOneOf(edge, Bottom, BottomLeft, BottomRight))
                SnapEdge(sized.bottom, incoming.bottom, target.top, target.bottom, snapWidth);
        }
    }
}

} // namespace velmo
