#pragma once

#include "controls/Controls.h"
#include "controls/Form.h"
#include "controls/ListRows.h"
#include "controls/ScrollBar.h"

namespace velmo::forms {

/// The store of lists, 265 by 138 pixels: one row a list, `Text` its title and `Path` its file.
class frmListMGR final : public controls::Form
{
public:
    frmListMGR();

    controls::ListRows lstLists;
    controls::ScrollBar scBarMgr;
    controls::Image imgClose;
};

} // namespace velmo::forms
