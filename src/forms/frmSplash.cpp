#include "frmSplash.h"

namespace velmo::forms {

frmSplash::frmSplash()
    : Form("frmSplash", "", 4800, 2400, controls::BorderStyle::None)
    , lblGlass(*this, "lblGlass", {1140, 240, 3420, 1920}, "")
    , imgBadge(*this, "imgBadge", {360, 990, 420, 420})
    , lblName(*this, "lblName", {1320, 780, 3060, 840}, "Velmo Player")
    , tmrcZat(*this, "tmrcZat", 1000, false, controls::TimerAccuracy::Precise)
{
    Place = controls::StartPlace::ScreenCentre;
    imgBadge.Picture = controls::PictureRef{controls::PictureList::wmain, 17};
    imgBadge.AccessibleName = "Velmo Player";
    lblName.ForeColor = 0xFFFF00;
    lblName.Font = controls::Font{.name = "DejaVu Sans", .sizePoints = 21};
    lblName.Overflow = controls::TextOverflow::Shrink;
}

} // namespace velmo::forms
