#include "PutPixels.h"

#include <QBackingStore>
#include <QImage>
#include <QWidget>
#include <QWindow>

#include <cstddef>
#include <cstring>

namespace velmo::qt {

namespace {

/// Copied, not painted: a painter for a picture this small costs more than the picture. False if
/// the store holds pixels of another kind, or other than one for each logical pixel.
bool Copy(QPaintDevice& store, QPoint corner, const QImage& image, const QRect& part)
{
    constexpr std::ptrdiff_t PixelBytes = 4;
    if (store.devType() != QInternal::Image)
        return false;
    auto& pixels = static_cast<QImage&>(store);
    const bool isSameKind = pixels.format() == QImage::Format_RGB32
                            || pixels.format() == QImage::Format_ARGB32_Premultiplied;
    if (!isSameKind || pixels.devicePixelRatio() != 1
        || !pixels.rect().contains(QRect(corner, part.size())))
        return false;
    for (int row = 0; row < part.height(); ++row)
        std::memcpy(pixels.scanLine(corner.y() + row) + corner.x() * PixelBytes,
                    image.constScanLine(part.top() + row) + part.left() * PixelBytes,
                    static_cast<std::size_t>(part.width() * PixelBytes));
    return true;
}

} // namespace

bool PutPixels(QWidget& widget, const QImage& image, const QRect& part)
{
    const QWidget& shown = *widget.window();
    const QWindow* const window = shown.windowHandle();
    QBackingStore* const store = shown.backingStore();
    if (window == nullptr || !window->isExposed() || !widget.isVisible() || store == nullptr
        || store->size() != window->size() || !(image.rect() & widget.rect()).contains(part))
        return false;
    const QRect place = part.translated(widget.mapTo(&shown, QPoint(0, 0)));
    store->beginPaint(place);
    const bool isCopied = Copy(*store->paintDevice(), place.topLeft(), image, part);
    store->endPaint();
    if (isCopied)
        store->flush(place);
    return isCopied;
}

} // namespace velmo::qt
