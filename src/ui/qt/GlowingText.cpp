// Around each letter lie three halos, the narrower ones the brighter. To stroke the letters'
// outlines would cost a hundred times as much as to draw them. So a point shines by the brightest
// of those points of the letters that are near enough, each of them less the farther it is.

#include "GlowingText.h"

#include <QFontMetricsF>
#include <QImage>
#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <vector>

namespace velmo::qt {

namespace {

constexpr double Reach = 2.25; ///< logical pixels; beyond it nothing shines

/// Share of the light that is left at a distance in logical pixels.
double LightAt(double distance)
{
    constexpr std::array<std::array<double, 2>, 3> Halos{
        {{0.65, 0.27}, {1.3, 0.15}, {Reach, 0.06}}
    };
    for (const auto& [width, light] : Halos)
        if (distance <= width)
            return light;
    return 0;
}

/// Bytes, row by row.
struct Coverage
{
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> bytes;

    std::uint8_t* Row(int y) { return bytes.data() + static_cast<std::ptrdiff_t>(y) * width; }
    const std::uint8_t* Row(int y) const
    {
        return bytes.data() + static_cast<std::ptrdiff_t>(y) * width;
    }
};

Coverage CoverageOf(const QImage& letters)
{
    Coverage found{.width = letters.width(), .height = letters.height(), .bytes = {}};
    for (int y = 0; y < found.height; ++y) {
        const auto* const row = reinterpret_cast<const QRgb*>(letters.constScanLine(y));
        std::transform(row, row + found.width, std::back_inserter(found.bytes), [](QRgb pixel) {
            return static_cast<std::uint8_t>(qAlpha(pixel));
        });
    }
    return found;
}

/// Light that comes from the letters, `dx` and `dy` away, weakened to `light` of 256.
void Shine(Coverage& halo, const Coverage& letters, int dx, int dy, unsigned light)
{
    const int first = std::max(0, -dx);
    const int end = std::min(letters.width, letters.width - dx);
    for (int y = std::max(0, -dy); y < std::min(letters.height, letters.height - dy); ++y) {
        const std::uint8_t* const from = letters.Row(y + dy) + dx;
        std::uint8_t* const to = halo.Row(y);
        for (int x = first; x < end; ++x)
            to[x] = std::max(to[x], static_cast<std::uint8_t>(from[x] * light / 256));
    }
}

Coverage HaloOf(const Coverage& letters, double ratio, double glow)
{
    constexpr double Full = 256;
    Coverage halo = letters;
    std::fill(halo.bytes.begin(), halo.bytes.end(), std::uint8_t{0});
    const int reach = static_cast<int>(Reach * ratio);
    for (int dy = -reach; dy <= reach; ++dy)
        for (int dx = -reach; dx <= reach; ++dx)
            if (const double light = glow * LightAt(std::hypot(dx, dy) / ratio); light > 0)
                Shine(halo, letters, dx, dy, static_cast<unsigned>(std::lround(Full * light)));
    return halo;
}

QImage Lit(const Coverage& halo, QColor ink, double ratio)
{
    QImage image(halo.width, halo.height, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    for (int y = 0; y < halo.height; ++y) {
        auto* const row = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < halo.width; ++x)
            row[x] = qPremultiply(qRgba(ink.red(), ink.green(), ink.blue(), halo.Row(y)[x]));
    }
    return image;
}

/// What is around a text that starts at `baseline`, as far as the painter's device is wide.
QImage HaloAround(const QString& text,
                  const QPointF& baseline,
                  const QPainter& painter,
                  double glow)
{
    const double ratio = painter.device()->devicePixelRatioF();
    const QFontMetricsF metrics(painter.font());
    const double width =
        std::min<double>(metrics.horizontalAdvance(text), painter.device()->width());
    const QSizeF size(width + 2 * baseline.x(),
                      baseline.y() + std::ceil(metrics.descent()) + baseline.x());
    QImage letters((size * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
    letters.setDevicePixelRatio(ratio);
    letters.fill(Qt::transparent);
    QPainter writer(&letters);
    writer.setFont(painter.font());
    writer.setPen(painter.pen());
    writer.drawText(baseline, text);
    writer.end();
    return Lit(HaloOf(CoverageOf(letters), ratio, glow), painter.pen().color(), ratio);
}

} // namespace

void DrawGlowingText(QPainter& painter, const QPointF& start, const QString& text, double glow)
{
    if (glow > 0) {
        constexpr int Margin = 3; // logical pixels, around the letters
        const QPointF baseline(Margin, Margin + std::ceil(QFontMetricsF(painter.font()).ascent()));
        painter.drawImage(start - baseline, HaloAround(text, baseline, painter, glow));
    }
    painter.drawText(start, text);
}

} // namespace velmo::qt
