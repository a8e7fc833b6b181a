#include "Button.h"

#include <utility>

namespace velmo::controls {

Button::Button(Form& form, std::string name, Bounds bounds, std::string caption)
    : Control(form, ControlKind::Button, std::move(name), bounds)
    , Caption(*this, std::move(caption))
{}

} // namespace velmo::controls
