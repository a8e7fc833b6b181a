#pragma once

#include "controls/Controls.h"

namespace velmo::test {

constexpr controls::MouseEvent LeftAt(double x, double y)
{
    return {.button = controls::MouseButton::Left, .shift = 0, .x = x, .y = y};
}

constexpr controls::MouseEvent Left = LeftAt(0, 0);
constexpr controls::MouseEvent Right{.button = controls::MouseButton::Right};

/// Presses and releases the left button on a picture.
inline void Click(const controls::Image& image, double x = 0, double y = 0)
{
    image.MouseDown(LeftAt(x, y));
    image.MouseUp(LeftAt(x, y));
}

} // namespace velmo::test
