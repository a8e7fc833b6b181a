#pragma once

#include "controls/Controls.h"
#include "controls/Form.h"

namespace velmo::forms {

/// The main window, 265 by 177 pixels.
class wmain final : public controls::Form
{
public:
    wmain();

    controls::Label lblBlackBG1; ///< dark ground of the right half of the display
    controls::Label lblBlackBG2; ///< dark ground of the lower row
    controls::Label lblTime;
    controls::Label lblSongName;
    controls::Image imgMinimize;
    controls::Image imgClose;
    controls::Image imgPositionBar;
    controls::Image imgPositionTicker;
    controls::Timer tmrBASS;   ///< the playback monitor's
    controls::Timer tmrScroll; ///< moves the title on
};

} // namespace velmo::forms
