#include "RunningText.h"

#include "GlowingText.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <cstddef>

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
    m_strip = QImage();
}

const QImage& RunningText::Picture(const Looks& looks)
{
    if (m_strip.isNull() || m_looks != looks) {
        m_looks = looks;
        MakeStrip();
    }
    if (m_strip.isNull())
        return m_picture;
    const auto inPixels = [&](double place) {
        return static_cast<int>(std::round(place * looks.ratio));
    };
    const int left = inPixels(m_left.at(static_cast<std::size_t>(m_turned)));
    const int width = std::min(inPixels(m_left.back()), m_picture.width());
    for (int row = 0; row < m_picture.height(); ++row) {
        const auto* const from = reinterpret_cast<const QRgb*>(m_strip.constScanLine(row)) + left;
        std::copy_n(from, width, reinterpret_cast<QRgb*>(m_picture.scanLine(row)));
    }
    return m_picture;
}

void RunningText::MakeStrip()
{
    constexpr int MostPixels = 4096;
    m_strip = QImage();
    m_picture = QImage();
    const QFontMetricsF metrics(m_looks.font);
    m_left.clear();
    for (qsizetype i = 0; i <= m_ring.size(); ++i)
        m_left.push_back(metrics.horizontalAdvance(m_ring.left(i)));
    const int width = static_cast<int>(std::ceil(2 * m_left.back() * m_looks.ratio));
    const QSize size = (QSizeF(m_looks.size) * m_looks.ratio).toSize();
    if (width > MostPixels || width < 1 || size.isEmpty())
        return;
    const auto image = [&](QSize pixels) {
        QImage made(pixels, QImage::Format_RGB32);
        made.setDevicePixelRatio(m_looks.ratio);
        made.fill(m_looks.ground);
        return made;
    };
    m_picture = image(size);
    m_strip = image(QSize(width, size.height()));
    QPainter painter(&m_strip);
    painter.setFont(m_looks.font);
    painter.setPen(m_looks.ink);
    DrawGlowingText(painter, QPointF(0, m_looks.baseline), m_ring + m_ring, m_looks.glow);
}

} // namespace velmo::qt
