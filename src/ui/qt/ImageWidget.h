#pragma once

#include "ControlWidget.h"

#include "controls/Controls.h"

namespace velmo::qt {

/// Paints an image's shape. The images of a slider tell screen readers where it stands.
class ImageWidget final : public ControlWidget
{
public:
    ImageWidget(controls::Image& image, ControlHost& host, QWidget* parent);

    void Sync() override;
    QAccessible::Role AccessibleRole() const override;
    double AccessibleShare() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const controls::Image& m_image;
    controls::Colour m_fill = 0;
    double m_share = -1.0;
};

} // namespace velmo::qt
