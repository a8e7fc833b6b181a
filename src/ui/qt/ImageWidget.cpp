#include "ImageWidget.h"

#include "QtFont.h"
#include "SkinPaint.h"

#include <QAccessible>
#include <QPainter>

#include <optional>

namespace velmo::qt {

namespace {

/// The sign of the round key that the shape is; nothing for other shapes.
std::optional<BeadSign> SignOf(controls::ImageShape shape)
{
    using controls::ImageShape;
    switch (shape) {
    case ImageShape::CloseBead: return BeadSign::Cross;
    case ImageShape::MinimizeBead: return BeadSign::Dash;
    case ImageShape::BackBead: return BeadSign::Back;
    case ImageShape::PlayBead: return BeadSign::Play;
    case ImageShape::PauseBead: return BeadSign::Pause;
    case ImageShape::StopBead: return BeadSign::Stop;
    case ImageShape::OpenBead: return BeadSign::Open;
    case ImageShape::NextBead: return BeadSign::Next;
    case ImageShape::Area:
    case ImageShape::Slot:
    case ImageShape::Knob: break;
    }
    return std::nullopt;
}

} // namespace

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
    return SignOf(m_image.Shape) ? QAccessible::PushButton : QAccessible::Graphic;
}

double ImageWidget::AccessibleShare() const
{
    return m_image.AccessibleValue();
}

void ImageWidget::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    if (const auto sign = SignOf(m_image.Shape))
        PaintBead(painter, rect(), *sign);
    else if (m_image.Shape == controls::ImageShape::Slot)
        PaintSlot(painter, rect());
    else if (m_image.Shape == controls::ImageShape::Knob)
        PaintKnob(painter, rect());
    else
        painter.fillRect(rect(), ToQColor(m_fill));
}

} // namespace velmo::qt
