#include "LabelWidget.h"

#include "QtFont.h"
#include "QtText.h"

#include <QAccessible>
#include <QFontMetricsF>
#include <QPainter>
#include <QVariant>

#include <algorithm>
#include <cmath>

namespace velmo::qt {

LabelWidget::LabelWidget(controls::Label& label, ControlHost& host, QWidget* parent)
    : ControlWidget(label, host, parent)
    , m_label(label)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_NoSystemBackground);
}

void LabelWidget::Sync()
{
    ControlWidget::Sync();
    Look look{.caption = m_label.Caption,
              .fore = m_label.ForeColor,
              .back = m_label.BackColor,
              .font = m_label.Font,
              .align = m_label.Align,
              .overflow = m_label.Overflow};
    if (look == m_look)
        return;
    const bool isNewText = look.caption != m_look.caption;
    m_look = std::move(look);
    update();
    if (!isNewText)
        return;
    m_text = FromBytes(m_look.caption);
    setProperty("text", m_text);
    if (QAccessible::isActive()) {
        QAccessibleValueChangeEvent change(this, m_text);
        QAccessible::updateAccessibility(&change);
    }
}

QAccessible::Role LabelWidget::AccessibleRole() const
{
    return m_label.Click ? QAccessible::PushButton : QAccessible::StaticText;
}

QString LabelWidget::AccessibleText() const
{
    return m_text;
}

void LabelWidget::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.fillRect(rect(), ToQColor(m_look.back));
    if (!m_text.isEmpty() && Host().IsTextShown())
        PaintText(painter);
}

void LabelWidget::PaintText(QPainter& painter) const
{
    QFont font = ToQFont(m_look.font);
    double width = QFontMetricsF(font).horizontalAdvance(m_text);
    if (m_look.overflow == controls::TextOverflow::Shrink && width > this->width()) {
        font.setPixelSize(std::max(1, static_cast<int>(font.pixelSize() * this->width() / width)));
        width = QFontMetricsF(font).horizontalAdvance(m_text);
    }
    const bool isCentred = m_look.align == controls::TextAlign::Centre && width < this->width();
    const double left = isCentred ? (this->width() - width) / 2 : 0;
    // Capitals stand in the middle of the height: many labels are lower than their font's full
    // line.
    const double baseline = (height() + QFontMetricsF(font).capHeight()) / 2;
    painter.setFont(font);
    painter.setPen(ToQColor(m_look.fore));
    painter.drawText(QPointF(left, std::round(baseline)), m_text);
}

} // namespace velmo::qt
