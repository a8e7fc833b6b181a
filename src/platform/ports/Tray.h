#pragma once

#include <string>

namespace velmo::ports {

/// The program's icon in the desktop's tray. User-interface thread.
class Tray
{
public:
    virtual ~Tray() = default;

    /// Shows the icon with that tool tip; an icon that is there stays the only one.
    virtual void Add(const std::string& toolTip) = 0;

    /// Takes the icon away, if there is one.
    virtual void Remove() = 0;
};

} // namespace velmo::ports
