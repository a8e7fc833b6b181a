#include "Program.h"

namespace velmo {

/// The entries of the menus that belong to no list.
void Program::BindMenus()
{
    m_menus.Bind();
}

} // namespace velmo
