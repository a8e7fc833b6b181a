#include "PictureWidget.h"

#include "PutPixels.h"
#include "QtFont.h"

#include <QPaintEvent>
#include <QPainter>

namespace velmo::qt {

PictureWidget::PictureWidget(controls::Picture& picture, ControlHost& host, QWidget* parent)
    : ControlWidget(picture, host, parent)
    , m_picture(picture)
{
    // Without these the window behind is painted with each frame.
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_NoSystemBackground);
    picture.PixelsChanged = [this](const controls::PixelArea& area) {
        Put(QRect(area.left, area.top, area.width, area.height));
    };
}

PictureWidget::~PictureWidget()
{
    m_picture.PixelsChanged = nullptr;
}

void PictureWidget::Sync()
{
    ControlWidget::Sync();
    if (m_picture.BackColor != m_ground) {
        m_ground = m_picture.BackColor;
        update();
    }
}

void PictureWidget::Put(const QRect& part)
{
    if (IsRingShown() || !PutPixels(*this, Image(), part))
        update(part);
}

QImage PictureWidget::Image() const
{
    const auto* bytes = reinterpret_cast<const uchar*>(m_picture.Pixels().data());
    return {bytes, m_picture.PixelWidth(), m_picture.PixelHeight(), QImage::Format_RGB32};
}

void PictureWidget::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    const QRect drawn(0, 0, m_picture.PixelWidth(), m_picture.PixelHeight());
    for (const QRect& ground : event->region() - drawn)
        painter.fillRect(ground, ToQColor(m_ground));
    const QRect part = event->rect() & drawn;
    if (!part.isEmpty())
        painter.drawImage(part, Image(), part);
}

} // namespace velmo::qt
