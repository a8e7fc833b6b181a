#include "BringOntoScreens.h"

#include "controls/WindowRect.h"

#include <algorithm>

namespace velmo {

namespace {

using controls::Form;
using controls::PixelGrid;
using ports::ScreenRect;

constexpr int GripHeight = 18; ///< logical pixels
constexpr int LeastSeen = 8;   ///< logical pixels of the grip, in both directions

bool CanBeGripped(const Form& form, const PixelGrid& grid, const std::vector<ScreenRect>& screens)
{
    ScreenRect grip = controls::WindowRect(form, grid);
    grip.bottom = grip.top + grid.FromLogical(GripHeight);
    const int least = grid.FromLogical(LeastSeen);
    return std::any_of(screens.begin(), screens.end(), [&](const ScreenRect& screen) {
        const int width = std::min(grip.right, screen.right) - std::max(grip.left, screen.left);
        const int height = std::min(grip.bottom, screen.bottom) - std::max(grip.top, screen.top);
        return width >= least && height >= least;
    });
}

/// The shift by which `low` to `high` comes to lie within `least` to `most`; at its near end, where
/// it's too long.
int ShiftInto(int low, int high, int least, int most)
{
    const int fromFarEnd = std::min(most - high, 0);
    return std::max(least - low, fromFarEnd);
}

bool IsHiddenChild(const Form& form)
{
    return !form.Visible && form.Owner != nullptr;
}

} // namespace

void BringOntoScreens(cMagneticWnd& windows, ports::Screens& screens)
{
    const PixelGrid grid(screens.Scale());
    const std::vector<ScreenRect> all = screens.All();
    if (all.empty())
        return;
    for (const Form* form : windows.Windows()) {
        if (IsHiddenChild(*form) || CanBeGripped(*form, grid, all))
            continue;
        const ScreenRect place = controls::WindowRect(*form, grid);
        const ScreenRect area = screens.WorkArea({.x = place.left, .y = place.top});
        const int dx = ShiftInto(place.left, place.right, area.left, area.right);
        const int dy = ShiftInto(place.top, place.bottom, area.top, area.bottom);
        windows.CheckGlueing();
        for (Form* moved : windows.BlockOf(*form)) {
            const ScreenRect old = controls::WindowRect(*moved, grid);
            controls::MoveWindow(*moved, grid, old.left + dx, old.top + dy);
        }
    }
    windows.CheckGlueing();
}

} // namespace velmo
