#pragma once

#include "controls/Controls.h"
#include "controls/Form.h"
#include "controls/ListRows.h"
#include "controls/ScrollBar.h"

namespace velmo::forms {

/// The playlist, 314 by 490 pixels. Its rows are the only copy of the list.
class Playlist final : public controls::Form
{
public:
    Playlist();

    controls::ListRows pl;
    controls::ScrollBar scBar;
    controls::Timer tmrInfo; ///< the title reader's
};

} // namespace velmo::forms
