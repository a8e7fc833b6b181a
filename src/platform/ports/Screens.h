#pragma once

#include <vector>

namespace velmo::ports {

/// A place on the desktop, in pixels of the screens: not in logical ones.
struct ScreenPoint
{
    int x = 0;
    int y = 0;

    bool operator==(const ScreenPoint&) const = default;
};

/// A rectangle of the desktop, in pixels of the screens. `right` and `bottom` stand one past it.
struct ScreenRect
{
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    int Width() const { return right - left; }
    int Height() const { return bottom - top; }
    ScreenRect MovedBy(int dx, int dy) const
    {
        return {.left = left + dx, .top = top + dy, .right = right + dx, .bottom = bottom + dy};
    }
    bool operator==(const ScreenRect&) const = default;
};

/// The screens by their pixels, for what has to be exact to the pixel at every scale.
/// User-interface thread.
class Screens
{
public:
    Screens() = default;
    Screens(const Screens&) = delete;
    Screens& operator=(const Screens&) = delete;
    virtual ~Screens() = default;

    /// Pixels of a logical pixel; one number for the whole desktop.
    virtual double Scale() = 0;

    /// Of the screen at that place, or of the nearest one, what panels leave free.
    virtual ScreenRect WorkArea(ScreenPoint place) = 0;

    /// All of them, whole. None only where there is no screen at all.
    virtual std::vector<ScreenRect> All() = 0;
};

} // namespace velmo::ports
