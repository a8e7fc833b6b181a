#include "RunningText.h"

#include <QFontMetricsF>
#include <QPainter>

#include <cmath>

namespace velmo::qt {

void RunningText::Show(const QString& text)
{
    const bool isPair = m_turned + 1 < m_ring.size() && m_ring.at(m_turned).isHighSurrogate();
    const qsizetype next = m_turned + (isPair ? 2 : 1);
    const qsizetype place = next < m_ring.size() ? next : 0;
    if (text.size() == m_ring.size() && text.endsWith(QStringView(m_ring).left(place))
        && text.startsWith(QStringView(m_ring).mid(place))) {
        m_turned = place;
        return;
    }
    m_ring = text;
    m_turned = 0;
    Forget();
}

bool RunningText::Paint(QPainter& painter, double baseline, int height)
{
    if (m_strip.isNull() && !MakeStrip(painter, baseline, height))
        return false;
    const double ratio = m_strip.devicePixelRatio();
    const auto inPixels = [ratio](double place) { return std::round(place * ratio); };
    const double left = inPixels(m_left.at(static_cast<std::size_t>(m_turned)));
    const double width = inPixels(m_left.back());
    painter.drawPixmap(QPointF(0, 0), m_strip, QRectF(left, 0, width, m_strip.height()));
    return true;
}

bool RunningText::MakeStrip(const QPainter& painter, double baseline, int height)
{
    constexpr double MostPixels = 4096;
    const QFontMetricsF metrics(painter.font());
    m_left.clear();
    for (qsizetype i = 0; i <= m_ring.size(); ++i)
        m_left.push_back(metrics.horizontalAdvance(m_ring.left(i)));
    const double ratio = painter.device()->devicePixelRatioF();
    const double width = std::ceil(2 * m_left.back() * ratio);
    if (width > MostPixels || width < 1)
        return false;
    m_strip = QPixmap(static_cast<int>(width), static_cast<int>(std::ceil(height * ratio)));
    m_strip.setDevicePixelRatio(ratio);
    m_strip.fill(Qt::transparent);
    QPainter drawn(&m_strip);
    drawn.setFont(painter.font());
    drawn.setPen(painter.pen());
    drawn.drawText(QPointF(0, baseline), m_ring + m_ring);
    return true;
}

} // namespace velmo::qt
