#pragma once

#include <QIcon>

namespace velmo::qt {

/// The program's icon, in the sizes of task bars and trays.
QIcon ProgramIcon();

} // namespace velmo::qt
