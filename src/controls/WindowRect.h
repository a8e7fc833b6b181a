#pragma once

#include "Form.h"
#include "PixelGrid.h"

#include "ports/Screens.h"

namespace velmo::controls {

/// The pixels of the screens that the window of a form covers, as the form says.
inline ports::ScreenRect WindowRect(const Form& form, const PixelGrid& grid)
{
    const int left = grid.ToPixels(form.Left);
    const int top = grid.ToPixels(form.Top);
    return {.left = left,
            .top = top,
            .right = left + grid.ToPixels(form.Width),
            .bottom = top + grid.ToPixels(form.Height)};
}

/// Sets the form's place to that pixel.
inline void MoveWindow(Form& form, const PixelGrid& grid, int left, int top)
{
    form.Left = grid.ToTwips(left);
    form.Top = grid.ToTwips(top);
}

} // namespace velmo::controls
