#include "frmResources.h"

namespace velmo::forms {

frmResources::frmResources()
    : Form("frmResources", "", 0, 0, controls::BorderStyle::None)
    , submnuAlwaysOnTop("submnuAlwaysOnTop", "Always on &top")
{}

} // namespace velmo::forms
