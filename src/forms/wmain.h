#pragma once

#include "controls/Controls.h"
#include "controls/Form.h"
#include "controls/Picture.h"

namespace velmo::forms {

/// The main window, 265 by 177 pixels.
class wmain final : public controls::Form
{
public:
    wmain();

    /// Hides the window and puts back what its controls showed before its load first ran.
    void Unload();

    controls::Label lblBlackBG1; ///< dark ground of the right half of the display
    controls::Label lblBlackBG2; ///< dark ground of the lower row
    controls::Label lblTime;
    controls::Label lblSongName;
    controls::Picture picVisualisation; ///< the sound, live
    controls::Image imgControl;         ///< opens the main menu
    controls::Image imgMinimize;
    controls::Image imgClose;
    controls::Image imgPositionBar;
    controls::Image imgPositionTicker;
    controls::Image imgBack;
    controls::Image imgPlay;
    controls::Image imgPause;
    controls::Image imgStop;
    controls::Image imgOpen;
    controls::Image imgNext;
    controls::Image imgK; ///< the program's badge
    controls::Image imgSoundVolume;
    controls::Image imgVolumeBar;
    controls::Image imgVolumeTicker;
    controls::Image imgShowPL;
    controls::Image imgShowListMgr;
    controls::Image imgShowFX;
    controls::Image imgShowDJ;
    controls::Image imgShowOptions;
    controls::Timer tmrSpectrum; ///< draws `picVisualisation`
    controls::Timer tmrBASS;     ///< the playback monitor's
    controls::Timer tmrScroll;   ///< moves the title on

private:
    void TakePictures();
};

} // namespace velmo::forms
