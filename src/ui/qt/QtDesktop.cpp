#include "QtDesktop.h"

#include "QtScreens.h"

#include "controls/PixelGrid.h"

#include <algorithm>

namespace velmo::qt {

ports::Desktop::Size QtDesktop::VirtualSize()
{
    QtScreens screens;
    const controls::PixelGrid grid(screens.Scale());
    Size size;
    for (const ports::ScreenRect& screen : screens.All()) {
        size.width = std::max(size.width, grid.ToTwips(screen.right));
        size.height = std::max(size.height, grid.ToTwips(screen.bottom));
    }
    return size;
}

} // namespace velmo::qt
