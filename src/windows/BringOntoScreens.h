#pragma once

#include "cMagneticWnd.h"

#include "ports/Screens.h"

namespace velmo {

/// Brings windows back that can no longer be taken hold of: a screen has gone, or the desktop is
/// smaller than that of the last run. A window counts as lost if the strip along its upper edge
/// shows on no screen; it comes back into the nearest work area, and what moves as one with it
/// comes along. One that hangs over an edge stays where it is. Hidden windows are looked at only if
/// they have no parent.
/// For the start, once the windows have their places, and for every change of the screens.
void BringOntoScreens(cMagneticWnd& windows, ports::Screens& screens);

} // namespace velmo
