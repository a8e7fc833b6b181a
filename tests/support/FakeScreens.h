#pragma once

#include "ports/Screens.h"

namespace velmo::test {

/// Screens as a test says: one of 1280 by 1024 pixels with a panel at its foot, at first.
class FakeScreens final : public ports::Screens
{
public:
    double scale = 1.0;
    std::vector<ports::ScreenRect> screens{
        {.left = 0, .top = 0, .right = 1280, .bottom = 1024}
    };
    int panelHeight = 24;

    double Scale() override { return scale; }
    ports::ScreenRect WorkArea(ports::ScreenPoint place) override
    {
        ports::ScreenRect area = screens.front();
        for (const ports::ScreenRect& screen : screens)
            if (place.x >= screen.left && place.x < screen.right)
                area = screen;
        area.bottom -= panelHeight;
        return area;
    }
    std::vector<ports::ScreenRect> All() override { return screens; }
};

} // namespace velmo::test
