#pragma once

#include "Property.h"

#include <functional>
#include <string>
#include <vector>

namespace velmo::controls {

/// One entry of a pop-up menu. An ampersand in the caption stands before the letter that chooses
/// the entry.
class MenuEntry final : public PropertyOwner
{
public:
    MenuEntry(std::string name, std::string caption);

    const std::string Name;
    Property<std::string> Caption;
    Property<bool> Checked{*this, false};
    Property<bool> Enabled{*this, true};

    /// The entries of the sub-menu that this one opens; empty for an entry that is chosen itself.
    std::vector<MenuEntry*> Children;

    std::function<void()> Click;

    /// Set by what shows the menu; called after every change of a property.
    std::function<void()> Changed;

    /// Whether it is no entry but a line between two.
    bool IsSeparator() const { return Caption.Get() == "-"; }

    void PropertyChanged() override;
};

/// A pop-up menu: a record, as the controls are. Its entries are members of the form that the menu
/// hangs in. User-interface thread only.
class Menu final
{
public:
    /// `entries` from the top down; they must outlive the menu.
    Menu(std::string name, std::vector<MenuEntry*> entries);

    const std::string Name;
    const std::vector<MenuEntry*> Entries;

    /// Set by what shows menus. Opens the menu with its upper left corner at that place of the
    /// virtual desktop, in twips, moved as far as it needs to stay on the screen; returns at once.
    std::function<void(double left, double top)> PopUp;
    /// The same at the pointer.
    std::function<void()> PopUpAtPointer;
};

} // namespace velmo::controls
