#pragma once

#include "controls/Form.h"
#include "controls/Menu.h"

namespace velmo::forms {

/// The window that is never shown: the menus hang in it.
class frmResources final : public controls::Form
{
public:
    frmResources();

    controls::MenuEntry submnuAlwaysOnTop;
};

} // namespace velmo::forms
