#include "SkinPaint.h"

#include <QPainter>
#include <QPolygonF>

#include <algorithm>
#include <vector>

namespace velmo::qt {

namespace {

// Signs are drawn in a square that goes from -2 to 2 both ways; a bead is 5.5 from its middle.
constexpr double BeadRadius = 5.5;
constexpr double FaceRadius = 4.5;
constexpr double Stroke = 1.4;
const QColor Ink(0x0c, 0x0d, 0x0f);

QPolygonF Bar(double left, double right, double top = -2, double bottom = 2)
{
    return QPolygonF({
        {left,  top   },
        {right, top   },
        {right, bottom},
        {left,  bottom}
    });
}

/// From its flat side to its point.
QPolygonF Arrow(double flat, double point)
{
    return QPolygonF({
        {flat,  -2},
        {point, 0 },
        {flat,  2 }
    });
}

std::vector<QPolygonF> FilledParts(BeadSign sign)
{
    switch (sign) {
    case BeadSign::Back: return {Arrow(2, -1), Bar(-2, -1)};
    case BeadSign::Play: return {Arrow(-1.4, 2)};
    case BeadSign::Pause: return {Bar(-1.8, -0.5), Bar(0.5, 1.8)};
    case BeadSign::Stop: return {Bar(-1.7, 1.7, -1.7, 1.7)};
    case BeadSign::Open:
        return {
            QPolygonF({{-2, 0.6}, {0, -2}, {2, 0.6}}
            ), Bar(-2, 2, 1.1, 2)
        };
    case BeadSign::Next: return {Arrow(-2, 1), Bar(1, 2)};
    case BeadSign::Cross:
    case BeadSign::Dash: break;
    }
    return {};
}

void StrokeParts(QPainter& painter, BeadSign sign)
{
    if (sign == BeadSign::Dash) {
        painter.drawLine(QPointF(-2.5, 0), QPointF(2.5, 0));
    } else if (sign == BeadSign::Cross) {
        painter.drawLine(QPointF(-2, -2), QPointF(2, 2));
        painter.drawLine(QPointF(-2, 2), QPointF(2, -2));
    }
}

} // namespace

void PaintBead(QPainter& painter, const QRect& place, BeadSign sign)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(QRectF(place).center());
    const double radius = (std::min(place.width(), place.height()) - 1) / 2.0;
    painter.scale(radius / BeadRadius, radius / BeadRadius);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Ink);
    painter.drawEllipse(QPointF(), BeadRadius, BeadRadius);
    QLinearGradient steel({-FaceRadius, -FaceRadius}, {FaceRadius, FaceRadius});
    steel.setColorAt(0, QColor(0xb3, 0xbc, 0xc7));
    steel.setColorAt(0.5, QColor(0x6a, 0x72, 0x7d));
    steel.setColorAt(1, QColor(0x2d, 0x31, 0x36));
    painter.setBrush(steel);
    painter.drawEllipse(QPointF(), FaceRadius, FaceRadius);
    painter.setBrush(Ink);
    for (const QPolygonF& part : FilledParts(sign))
        painter.drawPolygon(part);
    painter.setPen(QPen(Ink, Stroke, Qt::SolidLine, Qt::FlatCap));
    StrokeParts(painter, sign);
    painter.restore();
}

} // namespace velmo::qt
