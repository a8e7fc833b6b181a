#include "SkinPictures.h"

#include <QPainter>
#include <QWidget>

#include <algorithm>
#include <cmath>

namespace velmo::qt {

namespace {

/// Looks at the bitmap's pixels without copying them.
QImage ImageOn(const skin::Bitmap& bitmap)
{
    constexpr qsizetype BytesPerPixel = 4;
    return {reinterpret_cast<const uchar*>(bitmap.Pixels().data()),
            bitmap.width,
            bitmap.height,
            bitmap.width * BytesPerPixel,
            QImage::Format_RGB32};
}

} // namespace

void SkinPictures::SetRatio(double ratio)
{
    if (ratio == m_ratio)
        return;
    m_ratio = ratio;
    m_made.clear();
}

const QImage& SkinPictures::Natural(controls::PictureRef picture)
{
    const skin::PictureSize size = skin::SizeOf(picture);
    return Stretched(picture, QSize(size.width, size.height) * m_ratio);
}

const QImage& SkinPictures::Stretched(controls::PictureRef picture, QSize pixels)
{
    const Key key{picture.list, picture.index, pixels.width(), pixels.height()};
    auto found = m_made.find(key);
    if (found == m_made.end())
        found = m_made.emplace(key, Make(picture, pixels)).first;
    return found->second.image;
}

SkinPictures::Entry SkinPictures::Make(controls::PictureRef picture, QSize pixels) const
{
    const int scale = std::clamp(static_cast<int>(std::ceil(m_ratio)), 1, skin::LargestScale);
    skin::Bitmap bitmap = skin::Decode(picture, scale);
    if (bitmap.Pixels().empty() || pixels.isEmpty())
        return {};
    const QImage drawn = ImageOn(bitmap);
    if (drawn.size() == pixels)
        return {.bitmap = std::move(bitmap), .image = drawn};
    return {.bitmap = {},
            .image = drawn.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                         .convertToFormat(QImage::Format_RGB32)};
}

void DrawByPixels(QPainter& painter, const QWidget& widget, const QImage& image)
{
    const double ratio = painter.device()->devicePixelRatioF();
    const QPointF corner = QPointF(widget.mapTo(widget.window(), QPoint(0, 0))) * ratio;
    const QPointF nearest(std::round(corner.x()), std::round(corner.y()));
    painter.save();
    painter.scale(1 / ratio, 1 / ratio);
    painter.drawImage(nearest - corner, image);
    painter.restore();
}

} // namespace velmo::qt
