#include "RowPainter.h"

#include "QtFont.h"
#include "QtText.h"

#include <QFontMetricsF>
#include <QLinearGradient>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace velmo::qt {

namespace {

constexpr int LeftMargin = 4;
constexpr int RightMargin = 5;
constexpr int ColumnGap = 6;

constexpr double TextShare = 0.82; ///< of its colour, on black
constexpr double LengthShare = 0.59;
constexpr double MarkedLengthShare = 0.72;
constexpr double HairlineShare = 0.55;

constexpr QColor Ground(1, 1, 1);
constexpr QColor MarkedTop(0x0d, 0x4a, 0x52);
constexpr QColor MarkedBottom(0x08, 0x34, 0x3b);
constexpr QColor Hairline(0x2a, 0xa4, 0xb0);
constexpr QColor MarkedText(0xea, 0xff, 0xff);

QColor Faded(QColor colour, double share)
{
    colour.setAlphaF(static_cast<float>(share));
    return colour;
}

/// As much of a text as a row can show, on one line: tags may hold a whole book.
QString OneLine(const std::string& bytes)
{
    QString text = FromBytes(bytes);
    for (QChar& character : text)
        if (character < QLatin1Char(' '))
            character = QLatin1Char(' ');
    return text;
}

void PaintGround(QPainter& painter, const QRect& place, const RowLook& look)
{
    const QColor line = Faded(Hairline, HairlineShare);
    if (!look.isMarked) {
        painter.fillRect(place, Ground);
    } else {
        QLinearGradient light(place.topLeft(), place.bottomLeft());
        light.setColorAt(0, MarkedTop);
        light.setColorAt(1, MarkedBottom);
        painter.fillRect(place, light);
        painter.fillRect(QRect(place.left(), place.top(), place.width(), 1), line);
    }
    if (!look.isFramed)
        return;
    // Four rectangles rather than a pen, which has no whole pixels at fractional scales.
    if (!look.isMarked)
        painter.fillRect(QRect(place.left(), place.top(), place.width(), 1), line);
    painter.fillRect(QRect(place.left(), place.bottom(), place.width(), 1), line);
    painter.fillRect(QRect(place.left(), place.top() + 1, 1, place.height() - 2), line);
    painter.fillRect(QRect(place.right(), place.top() + 1, 1, place.height() - 2), line);
}

} // namespace

bool RowPainter::SetStyle(const RowStyle& style)
{
    if (style == m_style)
        return false;
    m_style = style;
    m_font.reset();
    return true;
}

const QFont& RowPainter::Font()
{
    if (!m_font) {
        m_font = ToQFont(m_style.font);
        const QFontMetricsF metrics(*m_font);
        m_ascent = metrics.ascent();
        m_descent = metrics.descent();
    }
    return *m_font;
}

QRect RowPainter::TextPlace(const QRect& place) const
{
    const int right = m_style.lengthWidth > 0 ? m_style.lengthWidth : RightMargin;
    return place.adjusted(LeftMargin, 0, -right, 0);
}

QRect RowPainter::EditPlace(const QRect& place, const RowLook& look)
{
    QRect text = TextPlace(place);
    if (m_style.lengthWidth > 0 && !look.length.empty()) {
        const double length = LeftOfLength(place, OneLine(look.length));
        text.setRight(std::min(text.right(), static_cast<int>(length) - ColumnGap));
    }
    return text;
}

double RowPainter::LeftOfLength(const QRect& place, const QString& length)
{
    return place.right() + 1 - RightMargin - QFontMetricsF(Font()).horizontalAdvance(length);
}

void RowPainter::Paint(QPainter& painter, const QRect& place, const RowLook& look, bool withText)
{
    PaintGround(painter, place, look);
    if (withText && look.isFilled)
        PaintTexts(painter, place, look);
}

void RowPainter::PaintTexts(QPainter& painter, const QRect& place, const RowLook& look)
{
    QFont font = Font();
    font.setUnderline(font.underline() || look.isHot);
    painter.setFont(font);
    const QFontMetricsF metrics(font);
    const QColor colour = look.isMarked ? MarkedText : ToQColor(m_style.foreColor);
    const double baseline = place.top() + std::floor((place.height() + m_ascent - m_descent) / 2);
    double right = TextPlace(place).right() + 1;
    if (m_style.lengthWidth > 0 && !look.length.empty()) {
        const QString length = OneLine(look.length);
        const double left = LeftOfLength(place, length);
        right = std::min(right, left - ColumnGap);
        painter.setPen(Faded(colour, look.isMarked ? MarkedLengthShare : LengthShare));
        painter.drawText(QPointF(left, baseline), length);
    }
    const double left = place.left() + LeftMargin;
    painter.setPen(look.isMarked ? colour : Faded(colour, TextShare));
    painter.drawText(QPointF(left, baseline),
                     metrics.elidedText(OneLine(look.text), Qt::ElideRight, right - left));
}

} // namespace velmo::qt
