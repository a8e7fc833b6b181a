#pragma once

#include "controls/Form.h"

namespace velmo {

/// Whether two windows stand edge to edge, by their own places in twips. Pure.
///
/// Kept: for a right-hand or lower neighbour `frm2` the further conditions subtract places instead
/// of testing for an overlap, so that the answer depends on where on the desktop the two stand, and
/// on their order. A left-hand or upper one only needs the equal edge.
bool isGlued(const controls::Form& frm1, const controls::Form& frm2);

} // namespace velmo
