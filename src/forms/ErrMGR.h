#pragma once

#include "controls/Controls.h"
#include "controls/Form.h"

namespace velmo::forms {

/// The one modeless window that reports an error.
class ErrMGR final : public controls::Form
{
public:
    ErrMGR();

    controls::TextBox txtMessage;
    controls::Label Label1; ///< closes the window
};

} // namespace velmo::forms
