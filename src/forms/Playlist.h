#pragma once

#include "controls/Controls.h"
#include "controls/Form.h"
#include "controls/ListRows.h"
#include "controls/ScrollBar.h"

namespace velmo::forms {

/// The playlist, 314 by 490 pixels. Its rows are the only copy of the list. Two rows of further
/// buttons, `frameOpen` and `frameOrder`, stand above the buttons that let them out; a button of
/// theirs is seen while its frame is visible.
class Playlist final : public controls::Form
{
public:
    Playlist();

    controls::ListRows pl;
    controls::ScrollBar scBar;
    controls::Image imgOpen;  ///< lets `frameOpen` out
    controls::Image imgOrder; ///< lets `frameOrder` out
    controls::Image imgSave;
    controls::Image imgClear;
    controls::Image maincapclose;

    controls::Image frameOpen;
    controls::Image imgOpenMedia;
    controls::Image imgOpenDirectory;
    controls::Image imgOpenList;
    controls::Image imgOpenLocation;

    controls::Image frameOrder;
    controls::Image imgOrderAZ;
    controls::Image imgOrderZA;
    controls::Image imgOrderRandom;

    controls::Timer tmrInfo; ///< the title reader's
};

} // namespace velmo::forms
