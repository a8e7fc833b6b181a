#pragma once

#include "ports/Clock.h"
#include "ports/Random.h"

#include <cstddef>

namespace velmo {

/// Rows picked at random, as the transport has always picked them: a uniform number below 1 times
/// the count, rounded. So 0, which is no row, comes out once in twice the count, as does the last
/// row.
class RandomRow
{
public:
    RandomRow(ports::Random& random, ports::Clock& clock);

    /// Starts a new sequence from the time of the day.
    void Seed();
    std::size_t Pick(std::size_t count);

private:
    ports::Random& m_random;
    ports::Clock& m_clock;
};

} // namespace velmo
