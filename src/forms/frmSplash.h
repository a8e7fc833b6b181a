#pragma once

#include "controls/Controls.h"
#include "controls/Form.h"

namespace velmo::forms {

/// What is seen while the sound core is about to be started.
class frmSplash final : public controls::Form
{
public:
    frmSplash();

    controls::Label lblGlass; ///< what the others stand on
    controls::Image imgBadge;
    controls::Label lblName;
    controls::Timer
        tmrcZat; ///< starts the core; runs from the moment the window is shown until its first tick
};

} // namespace velmo::forms
