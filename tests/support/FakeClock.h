#pragma once

#include "ports/Clock.h"

namespace velmo::test {

/// A clock that stands where the test has set it.
class FakeClock final : public ports::Clock
{
public:
    std::string DateText() override { return date; }
    std::string TimeText() override { return time; }
    float SecondsSinceMidnight() override { return seconds; }

    std::string date = "11-21-2026";
    std::string time = "12:00:00";
    float seconds = 43200;
};

} // namespace velmo::test
