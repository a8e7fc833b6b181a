#include "SeededRandom.h"

#include <bit>
#include <cstdint>

namespace velmo {

void SeededRandom::Seed(float secondsSinceMidnight)
{
    m_engine.seed(std::bit_cast<std::uint32_t>(secondsSinceMidnight));
}

float SeededRandom::Next()
{
    constexpr unsigned UnusedBits = 8;
    constexpr float Steps = 16777216; // 2 to the power of 24
    return static_cast<float>(m_engine() >> UnusedBits) / Steps;
}

} // namespace velmo
