#include "ImageWidget.h"

#include "QtFont.h"
#include "SkinPictures.h"

#include <QAccessible>
#include <QPainter>

#include <cmath>

namespace velmo::qt {

ImageWidget::ImageWidget(controls::Image& image, ControlHost& host, QWidget* parent)
    : ControlWidget(image, host, parent)
    , m_image(image)
{
    setAttribute(Qt::WA_NoSystemBackground);
}

void ImageWidget::Sync()
{
    ControlWidget::Sync();
    const Look look{
        .picture = m_image.Picture, .stretch = m_image.Stretch, .fill = m_image.FillColor};
    if (look != m_look) {
        m_look = look;
        update();
    }
    // What hides all that is under it spares the ground from being painted with it.
    setAttribute(Qt::WA_OpaquePaintEvent, CoversAll());
    const double share = m_image.AccessibleValue();
    if (share != m_share && QAccessible::isActive()) {
        QAccessibleValueChangeEvent change(this, share);
        QAccessible::updateAccessibility(&change);
    }
    m_share = share;
}

bool ImageWidget::CoversAll() const
{
    const double ratio = devicePixelRatioF();
    if (ratio != std::floor(ratio))
        return false; // its edges share pixels of the screen with what is beside it
    const skin::PictureSize drawn = skin::SizeOf(m_look.picture);
    const bool isDrawn = drawn.width > 0;
    const bool isLargeEnough = drawn.width >= width() && drawn.height >= height();
    return m_look.fill || (isDrawn && (m_look.stretch || isLargeEnough));
}

QAccessible::Role ImageWidget::AccessibleRole() const
{
    if (AccessibleShare() >= 0)
        return QAccessible::Slider;
    return m_image.States.pressed ? QAccessible::PushButton : QAccessible::Graphic;
}

double ImageWidget::AccessibleShare() const
{
    return m_image.AccessibleValue();
}

/// Each edge goes to the nearest pixel by itself, as neighbours' edges do.
QSize ImageWidget::SizeOnScreen() const
{
    const double ratio = devicePixelRatioF();
    const QRect place = geometry();
    const auto length = [ratio](int from, int pixels) {
        return static_cast<int>(std::lround((from + pixels) * ratio) - std::lround(from * ratio));
    };
    return {length(place.x(), place.width()), length(place.y(), place.height())};
}

void ImageWidget::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    if (m_look.fill)
        painter.fillRect(rect(), ToQColor(*m_look.fill));
    if (!m_look.picture)
        return;
    SkinPictures& pictures = Host().Pictures();
    pictures.SetRatio(devicePixelRatioF());
    DrawByPixels(painter,
                 *this,
                 m_look.stretch ? pictures.Stretched(m_look.picture, SizeOnScreen())
                                : pictures.Natural(m_look.picture));
}

} // namespace velmo::qt
