#include "wmain.h"

namespace velmo::forms {

namespace {

constexpr controls::Colour Cyan = 0xFFFF00;
constexpr controls::Colour ClockCyan = 0xFFF66F;
constexpr int Bold = 700;
constexpr double PositionTickerLeft = 240;
constexpr double VolumeTickerLeft = 3195;
constexpr const char* FirstTime = "00:00";
constexpr const char* FirstTitle = "Velmo Player - Made to be heard!    ***  ";

/// The transport's keys stand in a row, without gaps.
constexpr controls::Bounds TransportPlace(int place)
{
    constexpr double Side = 420;
    return {.left = 240 + place * Side, .top = 1350, .width = Side, .height = Side};
}

} // namespace

wmain::wmain()
    : Form("wmain", "Velmo Player", 3975, 2655, controls::BorderStyle::None)
    , lblBlackBG1(*this, "lblBlackBG1", {1830, 330, 1935, 670}, "")
    , lblBlackBG2(*this, "lblBlackBG2", {230, 1915, 3550, 510}, "")
    , lblTime(*this, "lblTime", {240, 330, 1515, 255}, FirstTime)
    , lblSongName(*this, "lblSongName", {1830, 330, 1935, 225}, FirstTitle)
    , picVisualisation(*this, "picVisualisation", {240, 570, 1520, 430})
    , imgMinimize(*this, "imgMinimize", {3500, 30, 195, 180}, controls::ImageShape::MinimizeBead)
    , imgClose(*this, "imgClose", {3740, 30, 195, 180}, controls::ImageShape::CloseBead)
    , imgPositionBar(*this, "imgPositionBar", {240, 1080, 3495, 135}, controls::ImageShape::Slot)
    , imgPositionTicker(*this,
                        "imgPositionTicker",
                        {PositionTickerLeft, 1100, 240, 135},
                        controls::ImageShape::Knob)
    , imgBack(*this, "imgBack", TransportPlace(0), controls::ImageShape::BackBead)
    , imgPlay(*this, "imgPlay", TransportPlace(1), controls::ImageShape::PlayBead)
    , imgPause(*this, "imgPause", TransportPlace(2), controls::ImageShape::PauseBead)
    , imgStop(*this, "imgStop", TransportPlace(3), controls::ImageShape::StopBead)
    , imgOpen(*this, "imgOpen", TransportPlace(4), controls::ImageShape::OpenBead)
    , imgNext(*this, "imgNext", TransportPlace(5), controls::ImageShape::NextBead)
    , imgVolumeBar(*this, "imgVolumeBar", {2355, 720, 1335, 135}, controls::ImageShape::Slot)
    , imgVolumeTicker(
          *this, "imgVolumeTicker", {VolumeTickerLeft, 720, 135, 135}, controls::ImageShape::Knob)
    , tmrSpectrum(*this, "tmrSpectrum", 25, true, controls::TimerAccuracy::Precise)
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
    picVisualisation.ToolTipText = "Live Spectrum (click to change)";
    imgMinimize.ToolTipText = "Minimize";
    imgClose.ToolTipText = "Terminate";
    imgPositionBar.AccessibleName = "Position";
    imgPositionTicker.AccessibleName = "Position";
    imgPositionTicker.SlideOn(imgPositionBar);
    imgBack.ToolTipText = "Back";
    imgPlay.ToolTipText = "Play";
    imgPause.ToolTipText = "Pause";
    imgStop.ToolTipText = "Stop";
    imgOpen.ToolTipText = "Open&Play";
    imgNext.ToolTipText = "Next";
    imgVolumeBar.ToolTipText = "Volume";
    imgVolumeTicker.ToolTipText = "Volume";
    imgVolumeTicker.SlideOn(imgVolumeBar);
}

void wmain::Unload()
{
    Hide();
    Loaded = false;
    tmrBASS.Enabled = false;
    tmrScroll.Enabled = true;
    lblTime.Caption = FirstTime;
    lblSongName.Caption = FirstTitle;
    imgPositionBar.Visible = true;
    imgPositionTicker.Visible = true;
    imgPositionTicker.Left = PositionTickerLeft;
    imgVolumeTicker.Left = VolumeTickerLeft;
}

} // namespace velmo::forms
