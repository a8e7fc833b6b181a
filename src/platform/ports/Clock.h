#pragma once

#include <string>

namespace velmo::ports {

/// The local time of this machine. User-interface thread.
class Clock
{
public:
    virtual ~Clock() = default;

    /// Today as "MM-DD-YYYY".
    virtual std::string DateText() = 0;

    /// Now as "HH:MM:SS".
    virtual std::string TimeText() = 0;

    /// Seconds of the day that have passed, with their fraction.
    virtual float SecondsSinceMidnight() = 0;
};

} // namespace velmo::ports
