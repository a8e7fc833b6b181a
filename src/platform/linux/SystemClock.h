#pragma once

#include "ports/Clock.h"

namespace velmo {

/// The machine's clock, in the local time zone.
class SystemClock final : public ports::Clock
{
public:
    float SecondsSinceMidnight() override;
};

} // namespace velmo
