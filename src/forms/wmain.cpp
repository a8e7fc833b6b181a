#include "wmain.h"

namespace velmo::forms {

namespace {

constexpr controls::Colour Cyan = 0xFFFF00;
constexpr controls::Colour ClockCyan = 0xFFF66F;
constexpr int Bold = 700;

} // namespace

wmain::wmain()
    : Form("wmain", "Velmo Player", 3975, 2655, controls::BorderStyle::None)
    , lblBlackBG1(*this, "lblBlackBG1", {1830, 330, 1935, 670}, "")
    , lblBlackBG2(*this, "lblBlackBG2", {230, 1915, 3550, 510}, "")
    , lblTime(*this, "lblTime", {240, 330, 1515, 255}, "00:00")
    , lblSongName(
          *this, "lblSongName", {1830, 330, 1935, 225}, "Velmo Player - Made to be heard!    ***  ")
    , imgMinimize(*this, "imgMinimize", {3500, 30, 195, 180}, controls::ImageShape::MinimizeBead)
    , imgClose(*this, "imgClose", {3740, 30, 195, 180}, controls::ImageShape::CloseBead)
    , imgPositionBar(*this, "imgPositionBar", {240, 1080, 3495, 135}, controls::ImageShape::Slot)
    , imgPositionTicker(
          *this, "imgPositionTicker", {240, 1100, 240, 135}, controls::ImageShape::Knob)
    , tmrBASS(*this, "tmrBASS", 1000, false, controls::TimerAccuracy::Precise)
    , tmrScroll(*this, "tmrScroll", 150, true, controls::TimerAccuracy::Precise)
{
    Panes = {
        {165, 270,  3645, 780},
        {165, 1875, 3645, 600}
    };
    lblBlackBG1.AccessibleName = "Display";
    lblBlackBG2.AccessibleName = "Windows";
    lblTime.ToolTipText = "Curent position";
    lblTime.ForeColor = ClockCyan;
    lblTime.Font = controls::Font{.name = "DejaVu Sans Mono", .sizePoints = 12, .weight = Bold};
    lblTime.Overflow = controls::TextOverflow::Shrink; // during a crossfade it shows two times
    lblSongName.AccessibleName = "Title";
    lblSongName.ForeColor = Cyan;
    imgMinimize.ToolTipText = "Minimize";
    imgClose.ToolTipText = "Terminate";
    imgPositionBar.AccessibleName = "Position";
    imgPositionTicker.AccessibleName = "Position";
    imgPositionTicker.SlideOn(imgPositionBar);
}

} // namespace velmo::forms
