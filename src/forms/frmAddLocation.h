#pragma once

#include "controls/Button.h"
#include "controls/Controls.h"
#include "controls/Form.h"

namespace velmo::forms {

/// Asks for an internet location and the name under which it joins the playlist.
class frmAddLocation final : public controls::Form
{
public:
    frmAddLocation();

    controls::Label lblLocation;
    controls::TextBox txtLocation;
    controls::Label lblName;
    controls::TextBox txtName;
    controls::Button btnAdd;
    controls::Button btnCancel;
};

} // namespace velmo::forms
