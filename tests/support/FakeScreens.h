#pragma once

#include "ports/Screens.h"

namespace velmo::test {

/// One screen as a test says: of 1280 by 1024 pixels with a panel of 24 at its foot, at first.
class FakeScreens final : public ports::Screens
{
public:
    double scale = 1.0;
    ports::ScreenRect screen{.left = 0, .top = 0, .right = 1280, .bottom = 1024};

    double Scale() override { return scale; }
    ports::ScreenRect WorkArea(ports::ScreenPoint) override
    {
        ports::ScreenRect area = screen;
        area.bottom -= 24;
        return area;
    }
    std::vector<ports::ScreenRect> All() override { return {screen}; }
};

} // namespace velmo::test
