#pragma once

#include <functional>
#include <string>

namespace velmo::ports {

/// What the mouse does at the icon, by the numbers the program knows it by.
enum class TrayMessage
{
    Touched = 512, ///< something is about to happen there
    DoubleClicked = 515,
    RightReleased = 517,
};

/// The program's icon in the desktop's tray. User-interface thread.
class Tray
{
public:
    virtual ~Tray() = default;

    /// Shows the icon with that tool tip, at once or as soon as the desktop has a tray; an icon
    /// that is there stays the only one.
    virtual void Add(const std::string& toolTip) = 0;

    /// Takes the icon away, if there is one.
    virtual void Remove() = 0;

    /// Called when the mouse is used at the icon. A desktop that shows the icon's menu by itself
    /// sends `Touched` before.
    std::function<void(TrayMessage)> Message;
};

} // namespace velmo::ports
