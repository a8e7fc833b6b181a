#include "QtFont.h"

#include "QtText.h"

#include <algorithm>
#include <cmath>

namespace velmo::qt {

QFont ToQFont(const controls::Font& font)
{
    constexpr double PixelsPerPoint = 96.0 / 72.0;
    constexpr double LargestPoints = 400;
    QFont result;
    result.setFamilies({FromBytes(font.name),
                        QStringLiteral("DejaVu Sans Condensed"),
                        QStringLiteral("DejaVu Sans")});
    const double points = std::clamp(font.sizePoints, 1.0, LargestPoints);
    result.setPixelSize(std::max(1, static_cast<int>(std::lround(points * PixelsPerPoint))));
    result.setWeight(static_cast<QFont::Weight>(std::clamp(font.weight, 1, 1000)));
    result.setItalic(font.italic);
    result.setUnderline(font.underline);
    result.setStrikeOut(font.strikethrough);
    return result;
}

QColor ToQColor(controls::Colour colour)
{
    const auto byte = [&](unsigned shift) { return static_cast<int>((colour >> shift) & 0xFFU); };
    return {byte(0), byte(8), byte(16)};
}

} // namespace velmo::qt
