#pragma once

class QImage;
class QRect;
class QWidget;

namespace velmo::qt {

/// Puts the pixels `part` of `image` (32 bits each, opaque) to the same place of the widget, within
/// its window's backing store, and onto the screen at once. The toolkit's way, by a paint event of
/// the next event turn, costs more than all the rest of a small moving picture. Nothing may stand
/// in front of the widget there. False, and the widget is to be painted in the toolkit's way, if
/// that can't be just now. User-interface thread.
bool PutPixels(QWidget& widget, const QImage& image, const QRect& part);

} // namespace velmo::qt
