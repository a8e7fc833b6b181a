#include "Playlist.h"

namespace velmo::forms {

Playlist::Playlist()
    : Form("Playlist", "Playlist", 4710, 7350, controls::BorderStyle::None)
    , pl(*this, "pl", {210, 285, 4020, 6720})
    , scBar(*this, "scBar", {4290, 285, 240, 6720})
    , tmrInfo(*this, "tmrInfo", 1, false, controls::TimerAccuracy::Coarse)
{
    Panes = {
        {165, 270, 4380, 6750}
    };
    pl.AccessibleName = "Playlist";
    scBar.AccessibleName = "Scroll bar";
}

} // namespace velmo::forms
