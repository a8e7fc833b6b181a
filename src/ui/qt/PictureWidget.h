#pragma once

#include "ControlWidget.h"

#include "controls/Picture.h"

#include <QImage>

namespace velmo::qt {

/// Paints a picture box: the pixels that it holds, and its ground around them.
///
/// A frame goes straight into the window's backing store and from there to the screen, only the
/// part that has changed: the toolkit's way, by a paint event of the next event turn, costs more
/// than all the rest of a frame. That way is still taken while the window is not on the screen, and
/// when the toolkit itself wants the box painted. No other control may stand in front of the box.
class PictureWidget final : public ControlWidget
{
public:
    PictureWidget(controls::Picture& picture, ControlHost& host, QWidget* parent);
    ~PictureWidget() override;
    PictureWidget(const PictureWidget&) = delete;
    PictureWidget& operator=(const PictureWidget&) = delete;

    void Sync() override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void Put(const QRect& part);
    bool CopyInto(QPaintDevice& store, const QRect& place, const QRect& part) const;
    QImage Image() const;

    controls::Picture& m_picture;
    controls::Colour m_ground = 0;
};

} // namespace velmo::qt
