#include "ProgramIcon.h"

#include <QString>

namespace velmo::qt {

QIcon ProgramIcon()
{
    QIcon icon;
    for (const int side : {16, 24, 32, 48, 64, 128})
        icon.addFile(QStringLiteral(":/velmo/%1.png").arg(side), QSize(side, side));
    return icon;
}

} // namespace velmo::qt
