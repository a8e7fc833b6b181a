#include "RandomRow.h"

#include "core/NumberText.h"

namespace velmo {

RandomRow::RandomRow(ports::Random& random, ports::Clock& clock)
    : m_random(random)
    , m_clock(clock)
{}

void RandomRow::Seed()
{
    m_random.Seed(m_clock.SecondsSinceMidnight());
}

std::size_t RandomRow::Pick(std::size_t count)
{
    const double exact = static_cast<double>(m_random.Next()) * static_cast<double>(count);
    return static_cast<std::size_t>(RoundHalfEven(exact));
}

} // namespace velmo
