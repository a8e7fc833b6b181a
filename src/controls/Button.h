#pragma once

#include "Control.h"

namespace velmo::controls {

/// A key with a caption; `Click` comes from the mouse and from the keyboard.
class Button final : public Control
{
public:
    Button(Form& form, std::string name, Bounds bounds, std::string caption);

    Property<std::string> Caption;
};

} // namespace velmo::controls
