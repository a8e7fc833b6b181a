#include "Menu.h"

#include <utility>

namespace velmo::controls {

MenuEntry::MenuEntry(std::string name, std::string caption)
    : Name(std::move(name))
    , Caption(*this, std::move(caption))
{}

void MenuEntry::PropertyChanged()
{
    if (Changed)
        Changed();
}

Menu::Menu(std::string name, std::vector<MenuEntry*> entries)
    : Name(std::move(name))
    , Entries(std::move(entries))
{}

} // namespace velmo::controls
