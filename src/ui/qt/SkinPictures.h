#pragma once

#include "controls/PictureRef.h"
#include "skin/Skin.h"

#include <QImage>
#include <QSize>

#include <cstdint>
#include <map>
#include <tuple>

class QPainter;
class QWidget;

namespace velmo::qt {

/// The skin's pictures as a window shows them: made when they are first asked for, and kept, for
/// one ratio of the screen's pixels to logical ones. At ratios 1, 2 and 3 a picture is the drawn
/// one, pixel by pixel; between them the next larger one is scaled down. User-interface thread.
class SkinPictures
{
public:
    /// The ratio of those asked for from now on. Another one than before drops all that are kept.
    void SetRatio(double ratio);
    double Ratio() const { return m_ratio; }

    /// The picture in its own size, in pixels of the screen. Null if the skin has no such picture.
    const QImage& Natural(controls::PictureRef picture);
    /// The picture as large as that, in pixels of the screen.
    const QImage& Stretched(controls::PictureRef picture, QSize pixels);

private:
    /// List, index, width and height.
    using Key = std::tuple<controls::PictureList, std::uint8_t, int, int>;
    struct Entry
    {
        skin::Bitmap bitmap; ///< what `image` looks at, where that is the drawn picture itself
        QImage image;
    };

    Entry Make(controls::PictureRef picture, QSize pixels) const;

    double m_ratio = 1.0;
    std::map<Key, Entry> m_made;
};

/// Paints an image whose pixels are those of the screen, from the upper left corner of `widget` on,
/// each on one pixel: at a ratio between whole numbers the corner goes to the nearest one.
void DrawByPixels(QPainter& painter, const QWidget& widget, const QImage& image);

} // namespace velmo::qt
