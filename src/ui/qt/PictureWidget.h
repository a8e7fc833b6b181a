#pragma once

#include "ControlWidget.h"

#include "controls/Picture.h"

#include <QImage>

namespace velmo::qt {

/// Paints a picture box: the pixels that it holds, and its ground around them. A frame goes to the
/// screen at once, only the part that has changed. No other control may stand in front of the box.
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
    QImage Image() const;

    controls::Picture& m_picture;
    controls::Colour m_ground = 0;
};

} // namespace velmo::qt
