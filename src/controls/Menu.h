#pragma once

#include "Property.h"

#include <functional>
#include <string>

namespace velmo::controls {

/// One entry of a pop-up menu.
class MenuEntry final : public PropertyOwner
{
public:
    MenuEntry(std::string name, std::string caption);

    const std::string Name;
    Property<std::string> Caption;
    Property<bool> Checked{*this, false};
    Property<bool> Enabled{*this, true};

    std::function<void()> Click;

    /// Set by what shows the menu; called after every change of a property.
    std::function<void()> Changed;

    void PropertyChanged() override;
};

} // namespace velmo::controls
