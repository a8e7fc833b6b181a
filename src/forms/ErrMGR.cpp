#include "ErrMGR.h"

namespace velmo::forms {

ErrMGR::ErrMGR()
    : Form("ErrMGR", "Velmo Player", 5100, 2100, controls::BorderStyle::Fixed)
    , txtMessage(*this, "txtMessage", {180, 180, 4740, 1200})
    , Label1(*this, "Label1", {1950, 1560, 1200, 360}, "Close")
{
    txtMessage.AccessibleName = "Message";
    Label1.AccessibleName = "Close";
    Label1.Align = controls::TextAlign::Centre;
    Label1.ForeColor = 0xE9E3DD;
    Label1.BackColor = 0x514943;
}

} // namespace velmo::forms
