#include "PictureRow.h"

#include <utility>

namespace velmo::controls {

namespace {

/// Without a trap: what a rule throws ends the handler that it is part of.
template<class... Parameters, class... Arguments>
void Call(const std::function<void(Parameters...)>& rule, const Arguments&... arguments)
{
    if (rule)
        rule(arguments...);
}

/// Whether it shows what a release has given it beside its own three pictures.
bool StaysAsReleased(const Image& image, const PictureRules& rules)
{
    const PictureStates& own = image.States;
    return rules.released && image.Picture.Get() == rules.released && rules.released != own.normal
           && rules.released != own.pressed && rules.released != own.hover;
}

} // namespace

PictureRow::PictureRow(std::vector<Image*> images)
    : m_images(std::move(images))
{}

void PictureRow::Bind(Image& image, const PictureRules& rules) const
{
    image.MouseDown = [&image, rules](const MouseEvent& event) {
        const bool presses =
            rules.pressedBy == PressedBy::AnyButton || event.button == MouseButton::Left;
        if (presses && (!rules.isPressable || rules.isPressable()))
            image.ShowPressed();
        Call(rules.pressed, event);
    };
    image.MouseMove = [&image, rules, row = *this](const MouseEvent& event) {
        if (!StaysAsReleased(image, rules))
            row.Light(image);
        Call(rules.hovered, event);
    };
    image.MouseUp = [&image, rules](const MouseEvent& event) {
        image.Picture = rules.released ? rules.released : image.States.normal;
        Call(rules.act, event);
    };
}

void PictureRow::Light(Image& image) const
{
    image.ShowHover();
    for (Image* other : m_images)
        if (other != &image)
            other->ShowNormal();
}

void PictureRow::ShowNormal() const
{
    for (Image* image : m_images)
        image->ShowNormal();
}

} // namespace velmo::controls
