#pragma once

namespace velmo::controls {

/// A rectangle of pixels, counted from the upper left corner of a picture box or a window.
struct PixelArea
{
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;

    bool operator==(const PixelArea&) const = default;
};

} // namespace velmo::controls
