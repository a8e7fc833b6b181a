#pragma once

#include <cmath>

namespace velmo::controls {

/// Twips against the pixels of the screens, for windows: those stand on whole pixels at every scale
/// of the desktop, as they would part or overlap otherwise.
class PixelGrid
{
public:
    /// `scale` is the number of screen pixels of a logical pixel, above 0.
    explicit PixelGrid(double scale)
        : m_scale(scale)
        , m_twipsPerPixel(std::round(TwipsPerLogicalPixel / scale * Binary) / Binary)
    {}

    /// Sums of what this gives are exact, and so are comparisons of such sums.
    double ToTwips(int pixels) const { return m_twipsPerPixel * pixels; }

    /// The nearest pixel, a half upwards also below zero: two windows side by side stay so wherever
    /// they are.
    int ToPixels(double twips) const
    {
        constexpr double Half = 0.5;
        return static_cast<int>(std::floor(twips / m_twipsPerPixel + Half));
    }

    /// The whole pixels of a length in logical ones.
    int FromLogical(int pixels) const { return static_cast<int>(std::lround(pixels * m_scale)); }

private:
    static constexpr double TwipsPerLogicalPixel = 15.0;
    /// Few enough digits for exact products, fine enough for the widest desktop.
    static constexpr double Binary = 1 << 20;

    double m_scale;
    double m_twipsPerPixel;
};

} // namespace velmo::controls
