#pragma once

#include "controls/Controls.h"
#include "controls/Form.h"
#include "controls/Picture.h"
#include "ui/ShownView.h"

namespace velmo::test {

/// A form of 200 by 100 pixels with one control of each kind, far from each other.
class SmallForm final : public controls::Form
{
public:
    SmallForm()
        : Form("SmallForm", "Small form", 3000, 1500, controls::BorderStyle::None)
        , lblTime(*this, "lblTime", {150, 150, 900, 300}, "00:00")
        , lblSong(*this, "lblSong", {1200, 150, 1500, 300}, "Song")
        , imgBar(*this, "imgBar", {150, 600, 2700, 150})
        , imgKnob(*this, "imgKnob", {150, 600, 300, 150})
        , imgArea(*this, "imgArea", {150, 900, 150, 150})
        , txtNote(*this, "txtNote", {1200, 900, 900, 450})
        , picSound(*this, "picSound", {450, 900, 150, 150})
        , tmrTick(*this, "tmrTick", 1000, false, controls::TimerAccuracy::Coarse)
    {
        imgKnob.SlideOn(imgBar);
    }

    controls::Label lblTime;
    controls::Label lblSong;
    controls::Image imgBar;
    controls::Image imgKnob;
    controls::Image imgArea;
    controls::TextBox txtNote;
    controls::Picture picSound;
    controls::Timer tmrTick;
};

using ShownForm = ShownView<SmallForm>;

} // namespace velmo::test
