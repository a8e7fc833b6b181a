#pragma once

namespace velmo::ports {

/// The local time of this machine. User-interface thread.
class Clock
{
public:
    virtual ~Clock() = default;

    /// Seconds of the day that have passed, with their fraction.
    virtual float SecondsSinceMidnight() = 0;
};

} // namespace velmo::ports
