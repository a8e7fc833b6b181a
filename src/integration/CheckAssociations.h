#pragma once

#include "core/modINI.h"
#include "ports/Associations.h"

namespace velmo {

/// Ties the chosen extensions to this program once more, if "CheckAssociationOnStart" wants it. The
/// list ends at the first element that is too short for its mask "*."; the program itself is made
/// known all the same.
void CheckAssociations(modINI& settings, ports::Associations& associations);

} // namespace velmo
