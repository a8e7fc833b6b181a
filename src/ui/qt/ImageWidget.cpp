#include "ImageWidget.h"

#include "QtFont.h"
#include "SkinPaint.h"

#include <QAccessible>
#include <QPainter>

namespace velmo::qt {

ImageWidget::ImageWidget(controls::Image& image, ControlHost& host, QWidget* parent)
    : ControlWidget(image, host, parent)
    , m_image(image)
{
    if (image.Shape == controls::ImageShape::Area) {
        setAttribute(Qt::WA_OpaquePaintEvent);
        setAttribute(Qt::WA_NoSystemBackground);
    }
}

void ImageWidget::Sync()
{
    ControlWidget::Sync();
    if (m_image.FillColor != m_fill) {
        m_fill = m_image.FillColor;
        update();
    }
    const double share = m_image.AccessibleValue();
    if (share != m_share && QAccessible::isActive()) {
        QAccessibleValueChangeEvent change(this, share);
        QAccessible::updateAccessibility(&change);
    }
    m_share = share;
}

QAccessible::Role ImageWidget::AccessibleRole() const
{
    if (AccessibleShare() >= 0)
        return QAccessible::Slider;
    const bool isKey = m_image.Shape == controls::ImageShape::CloseBead
                       || m_image.Shape == controls::ImageShape::MinimizeBead;
    return isKey ? QAccessible::PushButton : QAccessible::Graphic;
}

double ImageWidget::AccessibleShare() const
{
    return m_image.AccessibleValue();
}

void ImageWidget::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    switch (m_image.Shape) {
    case controls::ImageShape::Area: painter.fillRect(rect(), ToQColor(m_fill)); break;
    case controls::ImageShape::Slot: PaintSlot(painter, rect()); break;
    case controls::ImageShape::Knob: PaintKnob(painter, rect()); break;
    case controls::ImageShape::CloseBead: PaintBead(painter, rect(), BeadSign::Cross); break;
    case controls::ImageShape::MinimizeBead: PaintBead(painter, rect(), BeadSign::Dash); break;
    }
}

} // namespace velmo::qt
