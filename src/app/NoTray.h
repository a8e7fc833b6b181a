#pragma once

#include "ports/Tray.h"

namespace velmo {

/// A desktop without a tray: shows nothing, and remembers what it was asked for.
class NoTray final : public ports::Tray
{
public:
    void Add(const std::string& toolTip) override
    {
        isWanted = true;
        wantedToolTip = toolTip;
    }
    void Remove() override { isWanted = false; }

    bool isWanted = false;
    std::string wantedToolTip;
};

} // namespace velmo
