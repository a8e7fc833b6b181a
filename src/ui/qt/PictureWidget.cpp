#include "PictureWidget.h"

#include "QtFont.h"

#include <QBackingStore>
#include <QPaintEvent>
#include <QPainter>
#include <QWindow>

#include <algorithm>
#include <cstddef>
#include <cstdint>

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
    QWindow* const screenWindow = window()->windowHandle();
    QBackingStore* const store = window()->backingStore();
    const bool isOnScreen = screenWindow != nullptr && screenWindow->isExposed() && isVisible();
    const QRect drawn = part & rect() & QRect(QPoint(0, 0), Image().size());
    if (!isOnScreen || IsRingShown() || store == nullptr || store->size() != screenWindow->size()
        || drawn != (part & rect())) {
        update(part);
        return;
    }
    const QRect place = drawn.translated(mapTo(window(), QPoint(0, 0)));
    store->beginPaint(place);
    if (!CopyInto(*store->paintDevice(), place, drawn)) {
        QPainter painter(store->paintDevice());
        painter.drawImage(place, Image(), drawn);
    }
    store->endPaint();
    store->flush(place);
}

/// Where the window's store is pixels of the same kind they're just copied: a painter for a
/// picture this small costs more than the picture.
bool PictureWidget::CopyInto(QPaintDevice& store, const QRect& place, const QRect& part) const
{
    if (store.devType() != QInternal::Image)
        return false;
    auto& image = static_cast<QImage&>(store);
    const bool isSameKind = image.format() == QImage::Format_RGB32
                            || image.format() == QImage::Format_ARGB32_Premultiplied;
    if (!isSameKind || image.devicePixelRatio() != 1 || !image.rect().contains(place))
        return false;
    const std::uint32_t* const pixels = m_picture.Pixels().data();
    for (int row = 0; row < part.height(); ++row) {
        const std::uint32_t* const from =
            pixels + std::ptrdiff_t{part.top() + row} * m_picture.PixelWidth() + part.left();
        std::copy_n(from,
                    part.width(),
                    reinterpret_cast<std::uint32_t*>(image.scanLine(place.top() + row))
                        + place.left());
    }
    return true;
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
