#pragma once

#include "controls/Form.h"
#include "controls/ListRows.h"
#include "controls/ScrollBar.h"

namespace velmo::forms {

/// The store of lists: one row a list, `Text` its title and `Path` its file.
class frmListMGR final : public controls::Form
{
public:
    frmListMGR();

    controls::ListRows lstLists;
    controls::ScrollBar scBarMgr;
};

} // namespace velmo::forms
