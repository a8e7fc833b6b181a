#pragma once

#include "ControlWidget.h"

#include "controls/Controls.h"

#include <optional>

namespace velmo::qt {

/// Paints an image's picture. The images of a slider tell screen readers where it stands.
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
    /// What the last `Sync` found, to tell whether what is seen changes.
    struct Look
    {
        controls::PictureRef picture;
        bool stretch = false;
        std::optional<controls::Colour> fill;

        bool operator==(const Look&) const = default;
    };

    bool CoversAll() const;
    QSize SizeOnScreen() const;

    const controls::Image& m_image;
    Look m_look;
    double m_share = -1.0;
};

} // namespace velmo::qt
