#include "SkinPaint.h"

#include <QLinearGradient>
#include <QPainter>
#include <QRadialGradient>

#include <cmath>
#include <vector>

namespace velmo::qt {

namespace {

constexpr int BodyRadius = 8;
constexpr int PaneRadius = 5;
constexpr int TitleStripPixels = 18;
constexpr QColor Outline(0x08, 0x09, 0x0b);

QColor White(double opacity)
{
    return QColor::fromRgbF(1.0F, 1.0F, 1.0F, static_cast<float>(opacity));
}

QColor Black(double opacity)
{
    return QColor::fromRgbF(0.0F, 0.0F, 0.0F, static_cast<float>(opacity));
}

/// A line of one pixel just inside `place`.
void StrokeInside(
    QPainter& painter, const QRectF& place, double inset, double radius, const QBrush& brush)
{
    const double edge = inset + 0.5;
    painter.setPen(QPen(brush, 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(place.adjusted(edge, edge, -edge, -edge), radius - edge, radius - edge);
}

QLinearGradient Diagonal(const QRectF& place)
{
    return {place.topLeft(), place.bottomRight()};
}

void FillMetal(QPainter& painter, const QRect& body)
{
    // What the round corners leave of the outline's pixels belongs to the outline.
    painter.fillRect(body, Outline);
    painter.setPen(Qt::NoPen);
    const auto fill = [&](const QBrush& brush) {
        painter.setBrush(brush);
        painter.drawRoundedRect(body, BodyRadius, BodyRadius);
    };
    QLinearGradient metal(body.topLeft(), body.bottomLeft());
    const double strip = std::min(1.0, TitleStripPixels / static_cast<double>(body.height()));
    metal.setColorAt(0, QColor(0x43, 0x48, 0x50));
    metal.setColorAt(strip, QColor(0x36, 0x3b, 0x42));
    metal.setColorAt((1 + strip) / 2, QColor(0x2b, 0x2f, 0x34));
    metal.setColorAt(1, QColor(0x22, 0x25, 0x29));
    fill(metal);
    constexpr double PoolRadius = 240;
    QRadialGradient pool(body.topLeft(), PoolRadius);
    QColor light(0xcf, 0xdc, 0xec);
    light.setAlphaF(0.17F);
    pool.setColorAt(0, light);
    light.setAlphaF(0);
    pool.setColorAt(1, light);
    fill(pool);
    QRadialGradient shade(body.bottomRight(), std::min(220, body.height() - TitleStripPixels));
    shade.setColorAt(0, Black(0.24));
    shade.setColorAt(1, Black(0));
    fill(shade);
}

} // namespace

QRegion BodyOutline(QSize size)
{
    std::vector<QRect> rows;
    for (int y = 0; y < BodyRadius; ++y) {
        const double up = BodyRadius - (y + 0.5);
        const double across = std::sqrt(BodyRadius * BodyRadius - up * up);
        const int inset = static_cast<int>(std::lround(BodyRadius - across));
        rows.emplace_back(inset, y, size.width() - 2 * inset, 1);
    }
    rows.emplace_back(0, BodyRadius, size.width(), size.height() - 2 * BodyRadius);
    for (int y = BodyRadius - 1; y >= 0; --y)
        rows.emplace_back(
            rows[static_cast<std::size_t>(y)].translated(0, size.height() - 1 - 2 * y));
    QRegion outline;
    outline.setRects(rows.data(), static_cast<int>(rows.size()));
    return outline;
}

void PaintBody(QPainter& painter, const QRect& body)
{
    painter.setRenderHint(QPainter::Antialiasing);
    FillMetal(painter, body);
    StrokeInside(painter, body, 0, BodyRadius, Outline);
    QLinearGradient chamfer = Diagonal(body);
    const auto stop = [&](double at, QColor colour, float opacity) {
        colour.setAlphaF(opacity);
        chamfer.setColorAt(at, colour);
    };
    stop(0.00, QColor(0xdd, 0xe5, 0xee), 0.85F);
    stop(0.18, QColor(0xaa, 0xb3, 0xbe), 0.55F);
    stop(0.42, QColor(0x7d, 0x86, 0x91), 0.38F);
    stop(0.66, QColor(0x33, 0x38, 0x3e), 0.40F);
    stop(1.00, QColor(0x08, 0x09, 0x0b), 0.75F);
    StrokeInside(painter, body, 1, BodyRadius, chamfer);
    QLinearGradient inner = Diagonal(body);
    inner.setColorAt(0, White(0.13));
    inner.setColorAt(1, Black(0.22));
    StrokeInside(painter, body, 2, BodyRadius, inner);
    painter.setRenderHint(QPainter::Antialiasing, false);
}

void PaintPane(QPainter& painter, const QRect& pane)
{
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF rim = QRectF(pane).adjusted(-1, -1, 1, 1);
    StrokeInside(painter, rim.adjusted(-1, -1, 1, 1), 0, PaneRadius + 2, Black(0.18));
    QLinearGradient sunk = Diagonal(rim);
    sunk.setColorAt(0, Black(0.75));
    sunk.setColorAt(0.5, Black(0.45));
    QColor lip(0x98, 0xa2, 0xae);
    lip.setAlphaF(0.42F);
    sunk.setColorAt(1, lip);
    StrokeInside(painter, rim, 0, PaneRadius + 1, sunk);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(1, 1, 1));
    painter.drawRoundedRect(pane, PaneRadius, PaneRadius);
    QLinearGradient edge(pane.topLeft(), pane.bottomLeft());
    edge.setColorAt(0, QColor(0x05, 0x08, 0x0a));
    edge.setColorAt(1, QColor(0x26, 0x32, 0x3a));
    StrokeInside(painter, pane, 0, PaneRadius, edge);
    QLinearGradient reflection(pane.topLeft(), pane.topRight());
    QColor gleam(0x9f, 0xd8, 0xe6);
    gleam.setAlphaF(0.34F);
    reflection.setColorAt(0.02, gleam);
    gleam.setAlphaF(0);
    reflection.setColorAt(0.46, gleam);
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.fillRect(QRect(pane.x() + PaneRadius, pane.y() + 1, pane.width() - 2 * PaneRadius, 1),
                     reflection);
}

QRect TitlePlace(const QRect& body)
{
    constexpr int Margin = 14;
    return {body.x() + Margin, body.y() + 2, body.width() - 2 * Margin, TitleStripPixels - 4};
}

void PaintTitle(QPainter& painter, const QRect& body, const QString& title)
{
    constexpr double LetterGap = 2;
    constexpr int LetterPixels = 8;
    QFont font;
    font.setFamilies({QStringLiteral("DejaVu Sans")});
    font.setPixelSize(LetterPixels);
    font.setWeight(QFont::Medium);
    font.setLetterSpacing(QFont::AbsoluteSpacing, LetterGap);
    painter.setFont(font);
    const QString letters = title.toUpper();
    const QRectF place = TitlePlace(body);
    const int centred = Qt::AlignLeft | Qt::AlignVCenter;
    painter.setPen(Black(0.45));
    painter.drawText(place.translated(0, -1), centred, letters);
    painter.setPen(QColor(0xb9, 0xc1, 0xcb));
    painter.drawText(place, centred, letters);
}

void PaintSlot(QPainter& painter, const QRect& place)
{
    constexpr double Height = 5;
    constexpr double Radius = Height / 2;
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF slot(
        place.x() + 1.0, place.y() + (place.height() - Height) / 2.0, place.width() - 2.0, Height);
    QLinearGradient lip(slot.topLeft(), slot.bottomLeft());
    lip.setColorAt(0, Black(0.5));
    lip.setColorAt(1, White(0.22));
    painter.setPen(Qt::NoPen);
    painter.setBrush(lip);
    painter.drawRoundedRect(slot.adjusted(-1, -1, 1, 1), Radius + 1, Radius + 1);
    QLinearGradient groove(slot.topLeft(), slot.bottomLeft());
    groove.setColorAt(0, QColor(0x07, 0x08, 0x0a));
    groove.setColorAt(1, QColor(0x12, 0x14, 0x17));
    painter.setBrush(groove);
    painter.drawRoundedRect(slot, Radius, Radius);
    painter.setRenderHint(QPainter::Antialiasing, false);
}

void PaintKnob(QPainter& painter, const QRect& place)
{
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF knob(place);
    const double radius = knob.height() / 2;
    QLinearGradient steel = Diagonal(knob);
    steel.setColorAt(0, QColor(0xb3, 0xbc, 0xc7));
    steel.setColorAt(0.45, QColor(0x6a, 0x72, 0x7d));
    steel.setColorAt(1, QColor(0x2d, 0x31, 0x36));
    painter.setPen(Qt::NoPen);
    painter.setBrush(steel);
    painter.drawRoundedRect(knob, radius, radius);
    StrokeInside(painter, knob, 0, radius, QColor(0x18, 0x1a, 0x1d));
    const QRectF jewel(knob.center().x() - 4, knob.center().y() - 1.5, 8, 3);
    QLinearGradient light(jewel.topLeft(), jewel.bottomLeft());
    light.setColorAt(0, QColor(0xb9, 0xfb, 0xff));
    light.setColorAt(0.5, QColor(0x27, 0xc3, 0xd1));
    light.setColorAt(1, QColor(0x06, 0x4a, 0x53));
    painter.setPen(Qt::NoPen);
    painter.setBrush(light);
    painter.drawRoundedRect(jewel, 1.5, 1.5);
    painter.setRenderHint(QPainter::Antialiasing, false);
}

} // namespace velmo::qt
