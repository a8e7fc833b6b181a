#include "frmListMGR.h"

namespace velmo::forms {

namespace {

constexpr std::size_t VisibleLists = 7;

} // namespace

frmListMGR::frmListMGR()
    : Form("frmListMGR", "ListManager", 3975, 2070, controls::BorderStyle::None)
    , lstLists(*this, "lstLists", {210, 285, 3285, 1680}, VisibleLists)
    , scBarMgr(*this, "scBarMgr", {3525, 285, 240, 1680})
    , imgClose(*this, "imgClose", {3740, 30, 195, 180})
{
    Picture = controls::PictureRef{controls::PictureList::listmgr, 1};
    lstLists.AccessibleName = "Lists";
    scBarMgr.AccessibleName = "Scroll bar of the lists";
    imgClose.TakeStates(controls::PictureList::wnd, 1);
    imgClose.ToolTipText = "Close";
}

} // namespace velmo::forms
