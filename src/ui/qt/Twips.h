#pragma once

#include <QRect>

#include <cmath>

namespace velmo::qt {

/// Twips of one logical pixel, whatever the screen's scale.
inline constexpr double TwipsPerPixel = 15.0;

/// The logical pixel nearest to a place in twips.
inline int ToPixels(double twips)
{
    return static_cast<int>(std::lround(twips / TwipsPerPixel));
}

/// A rectangle in twips as one of logical pixels: each edge is rounded by itself, so that
/// neighbours stay neighbours.
inline QRect ToPixels(double left, double top, double width, double height)
{
    const QPoint upperLeft(ToPixels(left), ToPixels(top));
    return {upperLeft,
            QSize(ToPixels(left + width) - upperLeft.x(), ToPixels(top + height) - upperLeft.y())};
}

} // namespace velmo::qt
