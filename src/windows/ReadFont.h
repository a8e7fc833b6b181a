#pragma once

#include "core/modINI.h"
#include "forms/Playlist.h"
#include "forms/wmain.h"

namespace velmo {

/// Gives the running title and the playlist's rows the font and the colour of the settings.
/// Numbers go by their numeric value; in the size a comma is a decimal point.
void ReadFont(modINI& settings, forms::wmain& window, forms::Playlist& playlist);

} // namespace velmo
