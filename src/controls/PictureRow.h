#pragma once

#include "Controls.h"

#include <functional>
#include <vector>

namespace velmo::controls {

/// Which buttons of the mouse press a picture.
enum class PressedBy
{
    LeftButton,
    AnyButton,
};

/// What distinguishes one picture of a row from the others. What is not set is the common rule.
struct PictureRules
{
    PressedBy pressedBy = PressedBy::LeftButton;
    /// Whether a press shows the pressed picture now. Unset: always.
    std::function<bool()> isPressable = {};
    /// What a release shows. None: the normal picture. One that is not among the picture's three
    /// stays until the row is lit elsewhere or goes to normal.
    PictureRef released = {};
    /// The pointer has moved over the picture; comes after the row has been lit.
    std::function<void(const MouseEvent&)> hovered = {};
    /// A button was pressed, any one; comes after the picture.
    std::function<void(const MouseEvent&)> pressed = {};
    /// A button was released, any one and anywhere; comes after the picture.
    std::function<void(const MouseEvent&)> act = {};
};

/// Pictures of which one at most stands lit: those that the pointer passes on its way from one to
/// the next. A press shows the pressed picture; a move the hover picture, also while a button is
/// held, and brings the rest of the row to normal; a release shows the normal picture. Nobody tells
/// when the pointer leaves a picture, so what lies around the row calls `ShowNormal`.
/// User-interface thread only; the pictures must outlive the row and the slots that it sets.
class PictureRow
{
public:
    explicit PictureRow(std::vector<Image*> images);

    /// Sets the mouse slots of `image`, which may stand outside the row. The slots keep the row's
    /// pictures; the row itself may go.
    void Bind(Image& image, const PictureRules& rules) const;

    /// `image` shows its hover picture, the others their normal one.
    void Light(Image& image) const;
    void ShowNormal() const;

private:
    std::vector<Image*> m_images;
};

} // namespace velmo::controls
