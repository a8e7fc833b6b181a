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

/// The keys of the other windows stand in a row below.
constexpr controls::Bounds WindowKeyPlace(int place)
{
    constexpr double Pitch = 600;
    constexpr double Side = 495;
    return {.left = 240 + place * Pitch, .top = 1920, .width = Side, .height = Side};
}

} // namespace

wmain::wmain()
    : Form("wmain", "Velmo Player", 3975, 2655, controls::BorderStyle::None)
    , lblBlackBG1(*this, "lblBlackBG1", {1830, 330, 1935, 670}, "")
    , lblBlackBG2(*this, "lblBlackBG2", {230, 1915, 3550, 510}, "")
    , lblTime(*this, "lblTime", {240, 330, 1515, 255}, FirstTime)
    , lblSongName(*this, "lblSongName", {1830, 330, 1935, 225}, FirstTitle)
    , picVisualisation(*this, "picVisualisation", {240, 570, 1520, 430})
    , imgControl(*this, "imgControl", {120, 120, 90, 90})
    , imgMinimize(*this, "imgMinimize", {3500, 30, 195, 180})
    , imgClose(*this, "imgClose", {3740, 30, 195, 180})
    , imgPositionBar(*this, "imgPositionBar", {240, 1080, 3495, 135})
    , imgPositionTicker(*this, "imgPositionTicker", {PositionTickerLeft, 1100, 240, 135})
    , imgBack(*this, "imgBack", TransportPlace(0))
    , imgPlay(*this, "imgPlay", TransportPlace(1))
    , imgPause(*this, "imgPause", TransportPlace(2))
    , imgStop(*this, "imgStop", TransportPlace(3))
    , imgOpen(*this, "imgOpen", TransportPlace(4))
    , imgNext(*this, "imgNext", TransportPlace(5))
    , imgK(*this, "imgK", {3360, 1350, 420, 420})
    , imgSoundVolume(*this, "imgSoundVolume", {1830, 600, 375, 375})
    , imgVolumeBar(*this, "imgVolumeBar", {2355, 720, 1335, 135})
    , imgVolumeTicker(*this, "imgVolumeTicker", {VolumeTickerLeft, 720, 135, 135})
    , imgShowPL(*this, "imgShowPL", WindowKeyPlace(0))
    , imgShowListMgr(*this, "imgShowListMgr", WindowKeyPlace(1))
    , imgShowFX(*this, "imgShowFX", WindowKeyPlace(2))
    , imgShowDJ(*this, "imgShowDJ", WindowKeyPlace(3))
    , imgShowOptions(*this, "imgShowOptions", WindowKeyPlace(4))
    , tmrSpectrum(*this, "tmrSpectrum", 25, true, controls::TimerAccuracy::Precise)
    , tmrBASS(*this, "tmrBASS", 1000, false, controls::TimerAccuracy::Precise)
    , tmrScroll(*this, "tmrScroll", 150, true, controls::TimerAccuracy::Precise)
{
    Picture = controls::PictureRef{controls::PictureList::wmain, 1};
    TakePictures();
    lblBlackBG1.AccessibleName = "Display";
    lblBlackBG2.AccessibleName = "Windows";
    lblTime.ToolTipText = "Curent position";
    lblTime.TabStop = true;
    lblTime.ForeColor = ClockCyan;
    lblTime.Glow = 1;
    lblTime.Font = controls::Font{.name = "DejaVu Sans Mono", .sizePoints = 12, .weight = Bold};
    lblTime.Overflow = controls::TextOverflow::Shrink; // during a crossfade it shows two times
    lblSongName.AccessibleName = "Title";
    lblSongName.ForeColor = Cyan;
    lblSongName.Glow = 0.4;
    picVisualisation.ToolTipText = "Live Spectrum (click to change)";
    picVisualisation.TabStop = true;
    imgControl.ToolTipText = "Menu";
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
    imgK.ToolTipText = "Velmo Player";
    imgSoundVolume.ToolTipText = "Volume Control";
    imgVolumeBar.ToolTipText = "Volume";
    imgVolumeTicker.ToolTipText = "Volume";
    imgVolumeBar.AccessibleName = "Volume";
    imgVolumeTicker.AccessibleName = "Volume";
    imgVolumeTicker.SlideOn(imgVolumeBar);
    imgShowPL.ToolTipText = "Playlist";
    imgShowListMgr.ToolTipText = "Playlist Manager";
    imgShowFX.ToolTipText = "Equalizer";
    imgShowDJ.ToolTipText = "Dj-ing options";
    imgShowOptions.ToolTipText = "Control Center";
}

void wmain::TakePictures()
{
    using controls::PictureList;
    imgClose.TakeStates(PictureList::wnd, 1);
    imgControl.TakeStates(PictureList::wnd, 1);
    imgMinimize.TakeStates(PictureList::wnd, 4);
    imgVolumeBar.TakeStates(PictureList::wmain, 2);
    imgShowOptions.TakeStates(PictureList::wmain, 5);
    imgShowDJ.TakeStates(PictureList::wmain, 8);
    imgShowFX.TakeStates(PictureList::wmain, 11);
    imgSoundVolume.TakeStates(PictureList::wmain, 14);
    imgK.TakeStates(PictureList::wmain, 17);
    imgShowListMgr.TakeStates(PictureList::wmain, 20);
    imgNext.TakeStates(PictureList::wmain, 23);
    imgOpen.TakeStates(PictureList::wmain, 26);
    imgPause.TakeStates(PictureList::wmain, 29);
    imgShowPL.TakeStates(PictureList::wmain, 32);
    imgPlay.TakeStates(PictureList::wmain, 35);
    imgBack.TakeStates(PictureList::wmain, 38);
    imgStop.TakeStates(PictureList::wmain, 41);
    imgPositionTicker.TakeStates(PictureList::wmain, 44);
    imgVolumeTicker.TakeStates(PictureList::wmain, 47);
    for (controls::Image* stretched : {&imgControl, &imgPositionTicker, &imgVolumeTicker})
        stretched->Stretch = true;
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
    imgPause.ToolTipText = "Pause";
    TakePictures();
}

} // namespace velmo::forms
