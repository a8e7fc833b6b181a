#pragma once

namespace velmo::ports {

/// Random numbers. User-interface thread.
class Random
{
public:
    virtual ~Random() = default;

    /// Starts a new sequence; `secondsSinceMidnight` is the time of the day.
    virtual void Seed(float secondsSinceMidnight) = 0;

    /// The next number of the sequence, uniform from 0 to below 1.
    virtual float Next() = 0;
};

} // namespace velmo::ports
