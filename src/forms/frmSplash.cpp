#include "frmSplash.h"

namespace velmo::forms {

frmSplash::frmSplash()
    : Form("frmSplash", "", 4800, 2400, controls::BorderStyle::None)
    , lblName(*this, "lblName", {600, 780, 3600, 840}, "Velmo Player")
    , tmrcZat(*this, "tmrcZat", 1000, false, controls::TimerAccuracy::Precise)
{
    Place = controls::StartPlace::ScreenCentre;
    Panes = {
        {360, 360, 4080, 1680}
    };
    lblName.ForeColor = 0xFFFF00;
    lblName.Font = controls::Font{.name = "DejaVu Sans", .sizePoints = 21};
    lblName.Align = controls::TextAlign::Centre;
    lblName.Overflow = controls::TextOverflow::Shrink;
}

} // namespace velmo::forms
