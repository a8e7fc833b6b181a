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

} // namespace velmo::controls
