#pragma once

#include "ports/Random.h"

#include <random>

namespace velmo {

/// Uniform numbers with the 24 bits that a float below 1 holds.
class SeededRandom final : public ports::Random
{
public:
    void Seed(float secondsSinceMidnight) override;
    float Next() override;

private:
    std::mt19937 m_engine;
};

} // namespace velmo
