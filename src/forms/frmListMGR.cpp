#include "frmListMGR.h"

namespace velmo::forms {

namespace {

constexpr std::size_t VisibleLists = 7;

} // namespace

frmListMGR::frmListMGR()
    : Form("frmListMGR", "ListManager", 3975, 2655, controls::BorderStyle::None)
    , lstLists(*this, "lstLists", {210, 285, 3300, 1995}, VisibleLists)
    , scBarMgr(*this, "scBarMgr", {3540, 285, 240, 1995})
{
    Panes = {
        {165, 270, 3645, 2025}
    };
    lstLists.AccessibleName = "Lists";
    scBarMgr.AccessibleName = "Scroll bar of the lists";
}

} // namespace velmo::forms
